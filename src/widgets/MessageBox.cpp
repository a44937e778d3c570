#include "widgets/MessageBox.h"

#include "core/TextRules.h"
#include "widgets/BannerKind.h"
#include "widgets/IconLabel.h"
#include "widgets/ScrolledText.h"

#include <QAccessible>
#include <QDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 32;
constexpr int narrowestText = 280;
constexpr int widestText = 440;
constexpr int highestText = 400;
constexpr int narrowestButton = 88;

QWidget* makeText(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setObjectName(u"MessageText"_s);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    // Wrapped at a width that suits the text; a path without blanks may still need more.
    label->ensurePolished();
    const int natural = label->sizeHint().width();
    label->setWordWrap(natural > widestText);
    label->setMinimumWidth(std::clamp(natural, narrowestText, widestText));
    return ScrolledText::bounded(label, widestText, highestText);
}

// A dialog of our own: the layout of Qt's message boxes cuts long Chinese lines under a style
// sheet.
class Box final : public QDialog {
public:
    // A name within the text must not turn the question around.
    Box(QWidget* parent, BannerKind kind, const QString& title, const QString& message)
        : QDialog(parent)
        , m_buttons(new QHBoxLayout)
    {
        const QString text = TextRules::withoutDirectionMarks(message);
        setObjectName(u"MessageBox"_s);
        setWindowTitle(title);
        setAccessibleDescription(text);
        auto* grid = new QGridLayout(this);
        grid->setContentsMargins(24, 24, 24, 20);
        grid->setHorizontalSpacing(16);
        grid->setVerticalSpacing(24);
        grid->setSizeConstraint(QLayout::SetFixedSize);
        grid->addWidget(
            new IconLabel(codeOf(kind), textTokenOf(kind), iconSize, this), 0, 0, Qt::AlignTop);
        grid->addWidget(makeText(text, this), 0, 1, Qt::AlignVCenter);
        grid->addLayout(m_buttons, 1, 0, 1, 2);
        m_buttons->setSpacing(8);
        m_buttons->addStretch();
    }

    QPushButton* addButton(const QString& text, ButtonRole role)
    {
        QPushButton* button = makeButton(text, role, this);
        button->setMinimumWidth(narrowestButton);
        m_buttons->addWidget(button);
        return button;
    }

    void setDefault(QPushButton* button)
    {
        button->setDefault(true);
        button->setFocus();
    }

protected:
    void showEvent(QShowEvent* event) override
    {
        QDialog::showEvent(event);
        QAccessibleEvent alert(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }

private:
    QHBoxLayout* m_buttons;
};

void tell(QWidget* parent, BannerKind kind, const QString& title, const QString& text)
{
    Box box(parent, kind, title, text);
    QPushButton* accept = box.addButton(u"确定"_s, ButtonRole::Primary);
    QObject::connect(accept, &QPushButton::clicked, &box, &QDialog::accept);
    box.setDefault(accept);
    box.exec();
}

} // namespace

namespace MessageBox {

void info(QWidget* parent, const QString& title, const QString& text)
{
    tell(parent, BannerKind::Info, title, text);
}

void warn(QWidget* parent, const QString& title, const QString& text)
{
    tell(parent, BannerKind::Warning, title, text);
}

void critical(QWidget* parent, const QString& title, const QString& text)
{
    tell(parent, BannerKind::Danger, title, text);
}

bool ask(QWidget* parent, const QString& title, const QString& text, const QString& acceptText,
    const QString& rejectText, ButtonRole acceptRole)
{
    const bool destructive = acceptRole == ButtonRole::Danger;
    Box box(parent, destructive ? BannerKind::Warning : BannerKind::Info, title, text);
    QPushButton* accept = box.addButton(acceptText, acceptRole);
    QPushButton* reject = box.addButton(rejectText, ButtonRole::Default);
    QObject::connect(accept, &QPushButton::clicked, &box, &QDialog::accept);
    QObject::connect(reject, &QPushButton::clicked, &box, &QDialog::reject);
    box.setDefault(destructive ? reject : accept);
    return box.exec() == QDialog::Accepted;
}

} // namespace MessageBox

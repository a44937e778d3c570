#include "widgets/MessageBox.h"

#include "theme/Icons.h"
#include "widgets/BannerKind.h"

#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 32;

void prepare(QMessageBox& box, BannerKind kind, const QString& title, const QString& text)
{
    box.setObjectName(u"MessageBox"_s);
    box.setWindowTitle(title);
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box.setIconPixmap(
        Icons::pixmap(codeOf(kind), textTokenOf(kind), iconSize, box.devicePixelRatio()));
}

QPushButton* addButton(
    QMessageBox& box, const QString& text, QMessageBox::ButtonRole place, ButtonRole role)
{
    QPushButton* button = box.addButton(text, place);
    setButtonRole(button, role);
    return button;
}

void tell(QWidget* parent, BannerKind kind, const QString& title, const QString& text)
{
    QMessageBox box(parent);
    prepare(box, kind, title, text);
    QPushButton* accept = addButton(box, u"确定"_s, QMessageBox::AcceptRole, ButtonRole::Primary);
    box.setDefaultButton(accept);
    box.setEscapeButton(accept);
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
    QMessageBox box(parent);
    prepare(box, destructive ? BannerKind::Warning : BannerKind::Info, title, text);
    QPushButton* accept = addButton(box, acceptText, QMessageBox::AcceptRole, acceptRole);
    QPushButton* reject = addButton(box, rejectText, QMessageBox::RejectRole, ButtonRole::Default);
    box.setDefaultButton(destructive ? reject : accept);
    box.setEscapeButton(reject);
    box.exec();
    return box.clickedButton() == accept;
}

} // namespace MessageBox

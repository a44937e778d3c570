#include "pages/documents/DocumentForm.h"

#include "dialogs/RiskNotice.h"
#include "pages/documents/DocumentPreview.h"
#include "pages/documents/ResultStrip.h"
#include "widgets/Banner.h"
#include "widgets/BusyNotice.h"
#include "widgets/ButtonRole.h"
#include "widgets/MessageBox.h"
#include "widgets/TextRole.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int narrowestInput = 480;
constexpr int usualInput = 520;

} // namespace

DocumentForm::DocumentForm(const QString& objectName, QWidget* parent)
    : QWidget(parent)
    , m_notice(new Banner(BannerKind::Info, this))
    , m_result(new ResultStrip(this))
{
    setObjectName(objectName);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(12);
    m_notice->setClosable(true);
    m_notice->hide();
    column->addWidget(m_notice);
    column->addWidget(m_result);
    auto* halves = new QSplitter(this);
    halves->setHandleWidth(9);
    halves->setChildrenCollapsible(false);
    halves->addWidget(buildInput());
    halves->addWidget(buildPreview());
    // A wider window widens the paper, which is hard to read when it is small.
    halves->setStretchFactor(0, 0);
    halves->setStretchFactor(1, 1);
    halves->setSizes({ usualInput, usualInput });
    column->addWidget(halves, 1);
}

QWidget* DocumentForm::buildInput()
{
    auto* half = new QWidget(this);
    half->setMinimumWidth(narrowestInput);
    auto* column = new QVBoxLayout(half);
    column->setContentsMargins(0, 0, 4, 0);
    column->setSpacing(12);

    auto* cards = new QWidget;
    m_body = new QVBoxLayout(cards);
    m_body->setContentsMargins(0, 0, 0, 0);
    m_body->setSpacing(12);
    m_scroll = new QScrollArea(half);
    m_scroll->setWidgetResizable(true);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_scroll->setWidget(cards);
    column->addWidget(m_scroll, 1);

    auto* line = new QHBoxLayout;
    auto* hint = new QLabel(u"生成后自动编号并存入文书档案。"_s, half);
    setTextRole(hint, TextRole::Hint);
    QPushButton* generate = makeButton(u"生成文书"_s, ButtonRole::Primary, half);
    generate->setObjectName(u"generate"_s);
    line->addWidget(hint, 1);
    line->addWidget(generate);
    column->addLayout(line);
    connect(generate, &QPushButton::clicked, this, &DocumentForm::onGenerate);
    return half;
}

QWidget* DocumentForm::buildPreview()
{
    auto* half = new QWidget(this);
    auto* column = new QVBoxLayout(half);
    column->setContentsMargins(4, 0, 0, 0);
    column->setSpacing(4);
    auto* title = new QLabel(u"文书预览"_s, half);
    setTextRole(title, TextRole::CardTitle);
    m_preview = new DocumentPreview([this] { return previewHtml(); }, half);
    auto* natural = new QCheckBox(u"原始大小"_s, half);
    connect(natural, &QCheckBox::toggled, m_preview, &DocumentPreview::setNaturalSize);
    auto* head = new QHBoxLayout;
    head->addWidget(title);
    head->addStretch();
    head->addWidget(natural);
    column->addLayout(head);
    setTabOrder(natural, m_preview);
    m_held = new Banner(BannerKind::Info, half);
    m_held->setText(u"所选流水较多，预览不自动更新。"_s);
    m_held->setAction(u"更新预览"_s);
    m_held->hide();
    connect(m_held, &Banner::actionTriggered, this, [this] {
        const BusyNotice notice(this, u"正在更新预览…"_s);
        m_preview->showNow();
    });
    column->addWidget(m_held);
    column->addWidget(m_preview, 1);
    return half;
}

void DocumentForm::refresh()
{
    m_result->refresh();
    inputChanged();
}

void DocumentForm::focusFirstField()
{
    QWidget* field = firstField();
    field->setFocus(Qt::OtherFocusReason);
    m_scroll->ensureWidgetVisible(field);
}

void DocumentForm::showNotice(const QString& text)
{
    m_notice->setText(text);
    m_notice->setVisible(!text.isEmpty());
}

void DocumentForm::inputChanged()
{
    const bool waits = isLong();
    m_held->setVisible(waits);
    if (waits)
        m_preview->hold();
    else
        m_preview->schedule();
}

bool DocumentForm::isLong() const
{
    return false;
}

bool DocumentForm::confirm()
{
    return true;
}

void DocumentForm::onGenerate()
{
    if (const QString problem = firstProblem(); !problem.isEmpty()) {
        MessageBox::warn(this, u"无法生成文书"_s, problem);
        return;
    }
    if (!confirm())
        return;
    DocumentResult result;
    {
        const BusyNotice notice(this, u"正在生成文书…"_s);
        result = generate();
    }
    if (!result.ok) {
        MessageBox::warn(this, u"无法生成文书"_s, result.error);
        return;
    }
    showNotice({});
    prepareNext();
    m_result->showResult(result);
    emit stored(result.docId);
    RiskNotice::warnIfBehind(this);
}

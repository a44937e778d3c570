#include "dialogs/transaction/RiskReviewDialog.h"

#include "core/Money.h"
#include "core/TextRules.h"
#include "db/TransactionDao.h"
#include "services/entries/EntryRules.h"
#include "services/entries/EntryService.h"
#include "widgets/FormRows.h"
#include "widgets/MessageBox.h"
#include "widgets/RiskBadge.h"
#include "widgets/ScrolledText.h"
#include "widgets/TextCount.h"
#include "widgets/TextRole.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

// The ids of the choices are the levels; this one gives the automatic level back.
constexpr int automatic = 100;

constexpr int factWidth = 440;
constexpr int highestFact = 160;

QLabel* makeText(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumHeight(32);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

} // namespace

RiskReviewDialog::RiskReviewDialog(qint64 entryId, QWidget* parent)
    : FormDialog(u"人工复核"_s, parent)
    , m_entry(TransactionDao().findById(entryId).value_or(Transaction()))
    , m_choices(new QButtonGroup(this))
    , m_note(new QPlainTextEdit(this))
{
    setObjectName(u"RiskReviewDialog"_s);
    auto* rows = new FormRows;
    addFacts(rows);
    rows->addRow(u"复核等级"_s, buildChoices(), Required::Yes,
        u"人工复核等级优先于自动判定，在恢复自动判定之前一直有效。"_s);
    m_note->setObjectName(u"reviewNote"_s);
    m_note->setPlaceholderText(
        u"2–500 字，写明判断的依据，如：款项为归还 2025 年 3 月的借款，见借款合同及往来决定书"_s);
    m_note->setPlainText(m_entry.riskManualNote);
    m_note->setFixedHeight(96);
    rows->addRow(u"复核说明"_s, m_note, Required::Yes);
    auto* count = new TextCount(EntryRules::longestReview, this);
    count->setCounted(m_entry.riskManualNote);
    connect(m_note, &QPlainTextEdit::textChanged, count,
        [this, count] { count->setCounted(m_note->toPlainText()); });
    body()->addLayout(rows);
    body()->addWidget(count);
    body()->addStretch();

    addRejectButton(u"取消"_s);
    connect(addPrimaryButton(u"保存"_s), &QPushButton::clicked, this, &RiskReviewDialog::onSave);
    for (const QKeySequence& keys : { QKeySequence(QKeySequence::Save),
             QKeySequence(Qt::CTRL | Qt::Key_Return), QKeySequence(Qt::CTRL | Qt::Key_Enter) })
        connect(new QShortcut(keys, this), &QShortcut::activated, this, &RiskReviewDialog::onSave);
    m_note->moveCursor(QTextCursor::End);
    focusChoice();
    resize(640, sizeHint().height());
}

void RiskReviewDialog::addFacts(FormRows* rows)
{
    rows->addRow(u"交易日期"_s, makeText(TextRules::dateText(m_entry.transDate), this));
    rows->addRow(
        u"摘要"_s, ScrolledText::bounded(makeText(m_entry.summary, this), factWidth, highestFact));
    rows->addRow(u"金额"_s,
        makeText(
            u"%1 %2 元"_s.arg(labelOf(m_entry.direction), Money::format(m_entry.amountFen)), this));
    rows->addRow(u"自动判定"_s, buildAutomatic());
}

QWidget* RiskReviewDialog::buildAutomatic()
{
    auto* cell = new QWidget(this);
    auto* column = new QVBoxLayout(cell);
    column->setContentsMargins(0, 4, 0, 0);
    column->setSpacing(4);
    column->addWidget(new RiskBadge(m_entry.riskAutoLevel, false, cell), 0, Qt::AlignLeft);
    const QString reasons
        = m_entry.riskReasons.isEmpty() ? u"未触发风险规则。"_s : m_entry.riskReasons.join(u'\n');
    QLabel* label = makeText(reasons, cell);
    label->setObjectName(u"riskReasons"_s);
    setTextRole(label, TextRole::Hint);
    column->addWidget(ScrolledText::bounded(label, factWidth, highestFact));
    return cell;
}

QWidget* RiskReviewDialog::buildChoices()
{
    auto* cell = new QWidget(this);
    auto* line = new QHBoxLayout(cell);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(12);
    const auto add = [&](const QString& text, int id) {
        auto* choice = new QRadioButton(text, cell);
        m_choices->addButton(choice, id);
        line->addWidget(choice);
    };
    for (const RiskLevel level : allValues<RiskLevel>())
        add(labelOf(level), static_cast<int>(level));
    // Without an override there is nothing to go back from.
    if (m_entry.riskManualOverride) {
        add(u"恢复自动判定"_s, automatic);
        m_choiceBefore = static_cast<int>(*m_entry.riskManualOverride);
        m_choices->button(m_choiceBefore)->setChecked(true);
    }
    line->addStretch();
    return cell;
}

void RiskReviewDialog::focusChoice()
{
    QAbstractButton* chosen = m_choices->checkedButton();
    (chosen ? chosen : m_choices->buttons().constFirst())->setFocus();
}

int RiskReviewDialog::exec()
{
    if (m_entry.id > 0)
        return FormDialog::exec();
    MessageBox::warn(parentWidget(), u"无法打开流水"_s, u"该流水可能已被删除。"_s);
    return Rejected;
}

bool RiskReviewDialog::hasUnsavedInput() const
{
    return m_choices->checkedId() != m_choiceBefore
        || m_note->toPlainText() != m_entry.riskManualNote;
}

void RiskReviewDialog::onSave()
{
    const int chosen = m_choices->checkedId();
    if (chosen < 0) {
        MessageBox::warn(this, u"请检查填写内容"_s, u"请选择复核等级"_s);
        focusChoice();
        return;
    }
    const QString note = m_note->toPlainText();
    if (const QString problem = EntryRules::reviewProblem(note); !problem.isEmpty()) {
        MessageBox::warn(this, u"请检查填写内容"_s, problem);
        m_note->setFocus();
        return;
    }
    const auto level
        = chosen == automatic ? std::nullopt : std::optional(static_cast<RiskLevel>(chosen));
    const EntryService::ReviewResult result = EntryService::review(m_entry.id, level, note);
    if (!result.ok) {
        MessageBox::critical(this, u"保存失败"_s, result.message);
        return;
    }
    accept();
}

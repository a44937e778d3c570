#include "dialogs/transaction/EntryForm.h"

#include "core/Money.h"
#include "db/ProjectDao.h"
#include "db/TransactionDao.h"
#include "dialogs/transaction/EntrySuggestions.h"
#include "widgets/AmountField.h"
#include "widgets/CodeChoice.h"
#include "widgets/DateEditor.h"
#include "widgets/FormRows.h"
#include "widgets/TextCount.h"

#include <QButtonGroup>
#include <QCompleter>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using EntryRules::Field;

namespace {

constexpr int noteHeight = 68;

QComboBox* makeCombo(const QString& name, QWidget* parent)
{
    auto* combo = new QComboBox(parent);
    combo->setObjectName(name);
    // As wide as the form allows: the name of one project must not widen the window.
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(8);
    combo->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    combo->setMaxVisibleItems(12);
    return combo;
}

QLineEdit* makeEdit(const QString& name, const QString& placeholder, QWidget* parent)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    edit->setPlaceholderText(placeholder);
    return edit;
}

QHBoxLayout* lineOf(QWidget* owner)
{
    auto* line = new QHBoxLayout(owner);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(12);
    return line;
}

// One row of two fields; the label of the second one stands between them.
QWidget* pairOf(QWidget* first, FieldLabel* label, QWidget* second)
{
    auto* pair = new QWidget;
    QHBoxLayout* line = lineOf(pair);
    label->setParent(pair);
    label->setFixedHeight(32);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->nameField(second);
    line->addWidget(first, 1);
    line->addWidget(label);
    line->addWidget(second, 1);
    return pair;
}

QWidget* withCount(QWidget* field, TextCount* count)
{
    auto* cell = new QWidget;
    QHBoxLayout* line = lineOf(cell);
    line->addWidget(field, 1);
    line->addWidget(count, 0, Qt::AlignBottom);
    count->setMinimumHeight(32);
    return cell;
}

void setReadingOrder(const QList<QWidget*>& fields)
{
    for (qsizetype i = 1; i < fields.size(); ++i)
        QWidget::setTabOrder(fields.at(i - 1), fields.at(i));
}

} // namespace

EntryForm::EntryForm(QWidget* parent)
    : QWidget(parent)
    , m_date(new DateEditor(DateEditor::Empty::Forbidden, this))
    , m_amount(new AmountField(this))
    , m_owner(makeCombo(u"ownerAccount"_s, this))
    , m_category(makeCombo(u"category"_s, this))
    , m_project(makeCombo(u"project"_s, this))
    , m_counterparty(makeEdit(u"counterpartyName"_s, u"客户/供应商/股东姓名，最多 64 字"_s, this))
    , m_counterpartyAccount(makeCombo(u"counterpartyAccount"_s, this))
    , m_summary(makeEdit(u"summary"_s, u"2–64 字，如：XX 项目设计费回款"_s, this))
    , m_summaryCount(new TextCount(EntryRules::longestSummary, this))
    , m_note(new QPlainTextEdit(this))
    , m_noteCount(new TextCount(EntryRules::longestNote, this))
{
    m_date->setObjectName(u"transDate"_s);
    m_amount->setObjectName(u"amount"_s);
    m_note->setObjectName(u"note"_s);
    m_note->setPlaceholderText(
        u"最多 500 字。5 万元以上转账请在此写明款项用途、依据等（备注不足 5 字且无凭证将触发预警）"_s);
    m_note->setFixedHeight(noteHeight);
    fillChoices<AccountType>(m_owner);
    // Of the company's own side it is always known whose account it was.
    m_owner->removeItem(m_owner->findData(codeOf(AccountType::Unknown)));
    fillChoices<AccountType>(m_counterpartyAccount);
    fillChoices<Category>(m_category);
    m_summaryCount->setMinimumWidth(m_noteCount->minimumWidth());
    buildRows();
    connectSignals();
    setReadingOrder({ m_date, m_in, m_out, m_amount, m_owner, m_category, m_project, m_counterparty,
        m_counterpartyAccount, m_summary, m_note });
}

void EntryForm::buildRows()
{
    auto* rows = new FormRows(this);
    rows->setContentsMargins(0, 0, 0, 0);
    const auto label = [this](const QString& text, Required required = Required::Yes) {
        auto* made = new FieldLabel(text, required, this);
        return made;
    };
    FieldLabel* directionLabel = label(u"收支方向"_s);
    FieldLabel* ownerLabel = label(u"本方账户"_s);
    FieldLabel* projectLabel = label(u"关联项目"_s, Required::No);
    FieldLabel* accountLabel = label(u"对方账户类型"_s);
    for (FieldLabel* second : { directionLabel, ownerLabel, projectLabel })
        second->setMinimumWidth(accountLabel->sizeHint().width());

    rows->addWrappedRow(
        u"交易日期"_s, pairOf(m_date, directionLabel, buildDirections()), m_date, Required::Yes);
    m_amountInWords = rows->addWrappedRow(u"金额（元）"_s, pairOf(m_amount, ownerLabel, m_owner),
                              m_amount, Required::Yes, u" "_s)
                          .hint;
    m_amountInWords->setObjectName(u"amountInWords"_s);
    rows->addWrappedRow(
        u"资金分类"_s, pairOf(m_category, projectLabel, m_project), m_category, Required::Yes);
    rows->addWrappedRow(u"对方名称"_s, pairOf(m_counterparty, accountLabel, m_counterpartyAccount),
        m_counterparty, Required::Yes);
    buildTexts(rows);
}

void EntryForm::buildTexts(FormRows* rows)
{
    rows->addWrappedRow(u"摘要"_s, withCount(m_summary, m_summaryCount), m_summary, Required::Yes);
    rows->addWrappedRow(u"备注"_s, withCount(m_note, m_noteCount), m_note);
}

QWidget* EntryForm::buildDirections()
{
    auto* choices = new QWidget(this);
    choices->setObjectName(u"direction"_s);
    QHBoxLayout* line = lineOf(choices);
    line->setSpacing(16);
    m_in = new QRadioButton(labelOf(Direction::In), choices);
    m_out = new QRadioButton(labelOf(Direction::Out), choices);
    m_in->setObjectName(u"directionIn"_s);
    m_out->setObjectName(u"directionOut"_s);
    m_in->setChecked(true);
    line->addWidget(m_in);
    line->addWidget(m_out);
    line->addStretch();
    return choices;
}

void EntryForm::connectSignals()
{
    connect(m_date, &DateEditor::dateChanged, this, &EntryForm::changed);
    connect(m_out, &QRadioButton::toggled, this, &EntryForm::changed);
    connect(m_amount, &AmountField::valueChanged, this, &EntryForm::showAmountInWords);
    connect(m_amount, &AmountField::valueChanged, this, &EntryForm::changed);
    for (QComboBox* combo : { m_owner, m_category, m_project, m_counterpartyAccount })
        connect(combo, &QComboBox::currentIndexChanged, this, &EntryForm::changed);
    for (QLineEdit* edit : { m_counterparty, m_summary })
        connect(edit, &QLineEdit::textChanged, this, &EntryForm::changed);
    connect(m_project, &QComboBox::currentTextChanged, m_project,
        [this](const QString& text) { m_project->setToolTip(Qt::convertFromPlainText(text)); });
    connect(m_summary, &QLineEdit::textChanged, m_summaryCount, &TextCount::setCounted);
    connect(m_note, &QPlainTextEdit::textChanged, this, [this] {
        m_noteCount->setCounted(m_note->toPlainText());
        emit changed();
    });
}

void EntryForm::showEntry(const Transaction& entry)
{
    m_date->setDate(entry.transDate);
    (entry.direction == Direction::In ? m_in : m_out)->setChecked(true);
    m_amount->setAmountFen(entry.amountFen);
    setChoice(m_owner, std::optional(entry.ownerAccountType));
    setChoice(m_category, std::optional(entry.category));
    fillProjects(entry.projectId);
    m_counterparty->setText(entry.counterpartyName);
    setChoice(m_counterpartyAccount, std::optional(entry.counterpartyAccountType));
    m_summary->setText(entry.summary);
    m_note->setPlainText(entry.note);
    showAmountInWords();

    m_known = TransactionDao().knownCounterparties();
    QStringList names;
    for (const Counterparty& known : m_known)
        names += known.name;
    auto* completer = new QCompleter(names, m_counterparty);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    completer->setFilterMode(Qt::MatchContains);
    completer->setMaxVisibleItems(8);
    m_counterparty->setCompleter(completer);
}

void EntryForm::fillProjects(const std::optional<qint64>& chosen)
{
    m_project->clear();
    m_project->addItem(u"不关联项目"_s, qint64(0));
    ProjectDao projects;
    for (const Project& project : projects.list()) {
        if (EntryRules::isOffered(project))
            m_project->addItem(EntryRules::projectText(project), project.id);
    }
    if (!chosen)
        return;
    // A project that is no longer offered, or cannot be read, stays the entry's project.
    if (m_project->findData(*chosen) < 0) {
        const std::optional<Project> history = projects.findById(*chosen);
        m_project->addItem(
            history ? EntryRules::projectText(*history) : u"项目 #%1（历史项目）"_s.arg(*chosen),
            *chosen);
    }
    m_project->setCurrentIndex(m_project->findData(*chosen));
}

void EntryForm::showAmountInWords()
{
    const qint64 fen = m_amount->amountFen();
    QString text = u"大写：%1"_s.arg(Money::toChineseUpper(fen));
    if (fen == 0)
        text = u"填写后这里显示大写金额，便于核对"_s;
    else if (fen > EntryRules::largestAmountFen)
        text = u"超过单笔上限 99,999,999.99 元"_s;
    m_amountInWords->setText(text);
    m_amount->setAccessibleDescription(text);
}

void EntryForm::enableSuggestions()
{
    new EntrySuggestions(
        { m_out, m_category, m_counterparty, m_counterpartyAccount }, m_known, this);
}

Direction EntryForm::direction() const
{
    return m_out->isChecked() ? Direction::Out : Direction::In;
}

Transaction EntryForm::edited(Transaction entry) const
{
    entry.transDate = m_date->date();
    entry.direction = direction();
    entry.amountFen = m_amount->amountFen();
    entry.ownerAccountType = choiceOf<AccountType>(m_owner).value_or(entry.ownerAccountType);
    entry.category = choiceOf<Category>(m_category).value_or(entry.category);
    const qint64 project = m_project->currentData().toLongLong();
    entry.projectId = project > 0 ? std::optional(project) : std::nullopt;
    entry.counterpartyName = m_counterparty->text();
    entry.counterpartyAccountType
        = choiceOf<AccountType>(m_counterpartyAccount).value_or(entry.counterpartyAccountType);
    entry.summary = m_summary->text();
    entry.note = m_note->toPlainText();
    return EntryRules::normalized(entry);
}

void EntryForm::focus(Field field)
{
    switch (field) {
    case Field::Date:
        m_date->setFocus();
        m_date->selectAll();
        break;
    case Field::Amount:
        m_amount->setFocus();
        break;
    case Field::Summary:
        m_summary->setFocus();
        break;
    case Field::Counterparty:
        m_counterparty->setFocus();
        break;
    case Field::Note:
        m_note->setFocus();
        break;
    }
}

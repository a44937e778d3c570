#include "pages/ledger/LedgerFilterCard.h"

#include "pages/DateRangeFields.h"
#include "widgets/ButtonRole.h"
#include "widgets/Card.h"
#include "widgets/CodeChoice.h"
#include "widgets/FieldLabel.h"

#include <QAbstractItemView>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int fieldGap = 16;

const QString& anyText()
{
    static const QString text = u"全部"_s;
    return text;
}

QComboBox* makeCombo(const QString& objectName, QWidget* parent)
{
    auto* combo = new QComboBox(parent);
    combo->setObjectName(objectName);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(8);
    return combo;
}

// From harmless to grave, as the question is usually asked.
void fillRisks(QComboBox* combo)
{
    combo->addItem(anyText());
    std::vector<RiskLevel> levels = allValues<RiskLevel>();
    std::ranges::reverse(levels);
    for (const RiskLevel level : levels)
        combo->addItem(labelOf(level), codeOf(level));
}

// Long labels stay readable in the list although the box is narrow.
void widenList(QComboBox* combo)
{
    constexpr int surroundings = 40;
    combo->view()->setMinimumWidth(combo->view()->sizeHintForColumn(0) + surroundings);
}

} // namespace

LedgerFilterCard::LedgerFilterCard(QWidget* parent)
    : QWidget(parent)
    , m_card(new Card({}, this))
    , m_range(new DateRangeFields(m_card))
    , m_owner(makeCombo(u"ownerFilter"_s, m_card))
    , m_category(makeCombo(u"categoryFilter"_s, m_card))
    , m_risk(makeCombo(u"riskFilter"_s, m_card))
    , m_keyword(new QLineEdit(m_card))
{
    setObjectName(u"LedgerFilterCard"_s);
    m_card->setAccessibleName(u"筛选条件"_s);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_card);

    fillChoices<AccountType>(m_owner, anyText());
    m_owner->removeItem(m_owner->findData(codeOf(AccountType::Unknown)));
    fillChoices<Category>(m_category, anyText());
    widenList(m_category);
    fillRisks(m_risk);
    m_keyword->setObjectName(u"keyword"_s);
    m_keyword->setPlaceholderText(u"摘要/对方名称，回车即查"_s);
    m_keyword->setClearButtonEnabled(true);
    buildFields();
    for (QLineEdit* field : findChildren<QLineEdit*>())
        field->installEventFilter(this);
    connect(m_range, &DateRangeFields::returnPressed, this, &LedgerFilterCard::searchRequested);
    connect(m_keyword, &QLineEdit::returnPressed, this, &LedgerFilterCard::searchRequested);
}

void LedgerFilterCard::buildFields()
{
    auto* first = new QHBoxLayout;
    auto* second = new QHBoxLayout;
    for (QHBoxLayout* line : { first, second }) {
        line->setSpacing(8);
        m_card->body()->addLayout(line);
    }
    // Wide windows do not need wide fields.
    m_owner->setMaximumWidth(200);
    m_category->setMaximumWidth(320);
    m_keyword->setMaximumWidth(520);
    addField(first, u"交易日期"_s, m_range);
    addField(first, u"本方账户"_s, m_owner, 20);
    addField(first, u"分类"_s, m_category, 30);
    first->addStretch(1);
    addField(second, u"风险等级"_s, m_risk);
    addField(second, u"关键字"_s, m_keyword, 50);

    QPushButton* search = makeButton(u"查询"_s, ButtonRole::Primary, m_card);
    search->setObjectName(u"search"_s);
    QPushButton* reset = makeButton(u"重置"_s, ButtonRole::Default, m_card);
    reset->setObjectName(u"reset"_s);
    second->addSpacing(8);
    second->addWidget(search);
    second->addWidget(reset);
    second->addStretch(1);
    connect(search, &QPushButton::clicked, this, &LedgerFilterCard::searchRequested);
    connect(reset, &QPushButton::clicked, this, &LedgerFilterCard::resetRequested);
}

void LedgerFilterCard::addField(
    QHBoxLayout* line, const QString& label, QWidget* field, int stretch)
{
    if (line->count() > 0)
        line->addSpacing(fieldGap - line->spacing());
    auto* caption = new FieldLabel(label, Required::No, m_card);
    if (field == m_range)
        caption->setBuddy(m_range->firstField());
    else
        caption->nameField(field);
    line->addWidget(caption);
    line->addWidget(field, stretch);
}

bool LedgerFilterCard::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride)
        return QWidget::eventFilter(watched, event);
    // On X11 Ctrl+D deletes the next character of a field; elsewhere on the page it copies an
    // entry.
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool isField = key->keyCombination() == QKeyCombination(Qt::ControlModifier, Qt::Key_D);
    if (isField)
        event->accept();
    return isField;
}

TransactionFilter LedgerFilterCard::filter() const
{
    TransactionFilter filter;
    filter.dateFrom = m_range->range().from;
    filter.dateTo = m_range->range().to;
    filter.owner = choiceOf<AccountType>(m_owner);
    filter.category = choiceOf<Category>(m_category);
    filter.risk = choiceOf<RiskLevel>(m_risk);
    filter.keyword = m_keyword->text().trimmed();
    return filter;
}

QString LedgerFilterCard::problem() const
{
    return m_range->problem();
}

DateRange LedgerFilterCard::range() const
{
    return m_range->range();
}

void LedgerFilterCard::setRange(const DateRange& range)
{
    m_range->setRange(range);
}

void LedgerFilterCard::setCategory(std::optional<Category> category)
{
    setChoice(m_category, category);
}

void LedgerFilterCard::setRisk(std::optional<RiskLevel> level)
{
    setChoice(m_risk, level);
}

void LedgerFilterCard::clear()
{
    m_range->setRange({});
    m_owner->setCurrentIndex(0);
    m_category->setCurrentIndex(0);
    m_risk->setCurrentIndex(0);
    m_keyword->clear();
}

void LedgerFilterCard::focusKeyword()
{
    m_keyword->setFocus(Qt::ShortcutFocusReason);
    m_keyword->selectAll();
}

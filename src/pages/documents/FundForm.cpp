#include "pages/documents/FundForm.h"

#include "pages/documents/FundEntryPicker.h"
#include "services/documents/DocumentTexts.h"
#include "services/documents/FundSelection.h"
#include "widgets/Banner.h"
#include "widgets/Card.h"
#include "widgets/DateEditor.h"
#include "widgets/FormRows.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int extraHeight = 72;
constexpr qsizetype longList = 100; // entries; three times as many take a second to lay out

QList<qint64> idsOf(const QList<Transaction>& entries)
{
    QList<qint64> ids;
    for (const Transaction& entry : entries)
        ids += entry.id;
    return ids;
}

} // namespace

FundForm::FundForm(QWidget* parent)
    : DocumentForm(u"FundForm"_s, parent)
{
    body()->addWidget(buildPurposeCard());
    body()->addWidget(buildEntryCard());
    body()->addWidget(buildTermsCard());
    body()->addStretch();
    offerNatures(Direction::In);

    // One of the two is enough: they exclude each other.
    connect(m_out, &QRadioButton::toggled, this, [this](bool out) {
        const Direction before = m_entries->direction();
        m_entries->setDirection(out ? Direction::Out : Direction::In);
        offerNatures(before);
    });
    connect(m_nature, &QComboBox::currentTextChanged, this, &FundForm::inputChanged);
    connect(m_entries, &FundEntryPicker::changed, this, &FundForm::showForeign);
    connect(m_entries, &FundEntryPicker::changed, this, &FundForm::inputChanged);
    connect(m_date, &DateEditor::dateChanged, this, &FundForm::inputChanged);
    connect(m_settleDate, &DateEditor::dateChanged, this, &FundForm::inputChanged);
    connect(m_extra, &QPlainTextEdit::textChanged, this, &FundForm::inputChanged);
}

Card* FundForm::buildPurposeCard()
{
    auto* card = new Card(u"往来方向与性质"_s, this);
    auto* choices = new QWidget(card);
    auto* line = new QHBoxLayout(choices);
    line->setContentsMargins(0, 2, 0, 2);
    line->setSpacing(16);
    m_in = new QRadioButton(DocumentTexts::directionLabel(Direction::In), choices);
    m_out = new QRadioButton(DocumentTexts::directionLabel(Direction::Out), choices);
    m_in->setChecked(true);
    line->addWidget(m_in);
    line->addWidget(m_out);
    line->addStretch();
    m_nature = new QComboBox(card);
    m_nature->setObjectName(u"fundNature"_s);
    m_nature->setEditable(true);
    m_nature->setCompleter(nullptr); // would finish words that the user meant otherwise
    m_nature->setInsertPolicy(QComboBox::NoInsert);
    m_nature->lineEdit()->setPlaceholderText(u"请选择或填写"_s);

    auto* rows = new FormRows;
    rows->addRow(u"往来方向"_s, choices, Required::Yes);
    rows->addRow(u"资金性质"_s, m_nature, Required::Yes);
    m_nature->lineEdit()->setAccessibleName(u"资金性质"_s);
    card->body()->addLayout(rows);
    return card;
}

Card* FundForm::buildEntryCard()
{
    auto* card = new Card(u"本决定覆盖的流水"_s, this);
    m_foreign = new Banner(BannerKind::Warning, card);
    m_foreign->setObjectName(u"foreignEntries"_s);
    m_foreign->hide();
    m_entries = new FundEntryPicker(card);
    card->body()->addWidget(m_foreign);
    card->body()->addWidget(m_entries);
    return card;
}

Card* FundForm::buildTermsCard()
{
    auto* card = new Card(u"日期与补充说明"_s, this);
    auto* rows = new FormRows;
    m_date = new DateEditor(DateEditor::Empty::Forbidden, card);
    m_date->setObjectName(u"decisionDate"_s);
    m_date->setToday();
    m_settleDate = new DateEditor(DateEditor::Empty::Allowed, card);
    m_settleDate->setObjectName(u"settleDate"_s);
    m_settleDate->setPlaceholderText(u"不约定"_s);
    m_extra = new QPlainTextEdit(card);
    m_extra->setObjectName(u"extraText"_s);
    m_extra->setFixedHeight(extraHeight);
    rows->addRow(u"决定日期"_s, m_date, Required::Yes);
    rows->addRow(u"结清日期"_s, m_settleDate, Required::No,
        u"约定结清或偿还的日期；借款建议填写，不约定请留空。"_s);
    rows->addRow(u"补充说明"_s, m_extra);
    card->body()->addLayout(rows);
    return card;
}

void FundForm::offerNatures(Direction before)
{
    const QString typed = m_nature->currentText();
    const QStringList natures = DocumentTexts::fundNatures(m_entries->direction());
    const bool belongsToOther
        = !natures.contains(typed) && DocumentTexts::fundNatures(before).contains(typed);
    {
        const QSignalBlocker silent(m_nature);
        m_nature->clear();
        m_nature->addItems(natures);
        // Nothing is chosen for the user: what the money is decides how a court reads it.
        m_nature->setCurrentIndex(-1);
        m_nature->setEditText(belongsToOther ? QString() : typed);
    }
    inputChanged();
}

void FundForm::setDirection(Direction direction)
{
    (direction == Direction::Out ? m_out : m_in)->setChecked(true);
}

void FundForm::request(const QList<qint64>& entryIds)
{
    m_requested = entryIds;
}

void FundForm::refresh()
{
    QString told;
    if (m_entries->reload(&told))
        told += takeRequest();
    // What was said before stays until the user closes it or a document is drawn up.
    if (!told.isEmpty())
        showNotice(told);
    DocumentForm::refresh();
}

QString FundForm::takeRequest()
{
    if (m_requested.isEmpty())
        return {};
    const FundSelection selection = FundSelections::choose(m_requested, m_entries->ledger());
    m_requested.clear();
    const QSet<qint64> wanted(selection.ids.begin(), selection.ids.end());
    const qsizetype dropped = (QSet<qint64>(m_entries->ticked()) - wanted).size();
    if (!wanted.isEmpty()) {
        setDirection(selection.direction);
        m_entries->setTicked(wanted);
    }
    QString told = FundSelections::leftOutText(selection);
    if (!wanted.isEmpty() && dropped > 0)
        told += u"此前勾选的 %1 笔已取消勾选。"_s.arg(dropped);
    return told;
}

// The ticks stay: a category may be wrong, or the account of the other side unknown.
void FundForm::showForeign()
{
    const QString warning = FundSelections::foreignText(m_entries->chosen());
    m_foreign->setText(warning);
    m_foreign->setVisible(!warning.isEmpty());
}

QWidget* FundForm::firstField() const
{
    // Wanted entries bring their direction along.
    if (!m_requested.isEmpty())
        return m_nature;
    return m_out->isChecked() ? m_out : m_in;
}

QString FundForm::firstProblem() const
{
    const QString problem = DocumentRules::firstProblem(input());
    if (!problem.isEmpty() || m_settleDate->isAcceptable())
        return problem;
    return u"结清日期无效，请填写日期或留空。"_s;
}

bool FundForm::isLong() const
{
    return m_entries->chosen().size() > longList;
}

FundDecisionInput FundForm::input() const
{
    return { .direction = m_entries->direction(),
        .fundNature = m_nature->currentText(),
        .transactionIds = idsOf(m_entries->chosen()),
        .decisionDate = m_date->date(),
        .settleDate = m_settleDate->date(),
        .extraText = m_extra->toPlainText() };
}

QString FundForm::previewHtml() const
{
    return DocumentService().preview(input());
}

DocumentResult FundForm::generate()
{
    return DocumentService().generateFundDecision(input());
}

void FundForm::prepareNext()
{
    QSet<qint64> rest = m_entries->ticked();
    for (const Transaction& entry : m_entries->chosen())
        rest.remove(entry.id);
    m_entries->setTicked(rest);
    m_nature->setCurrentIndex(-1);
    m_nature->clearEditText();
    m_settleDate->setDate({});
    m_extra->clear();
    m_date->setToday();
    refresh();
}

#include "pages/documents/AnnualForm.h"

#include "core/Money.h"
#include "db/DocumentDao.h"
#include "pages/documents/FreeItemList.h"
#include "services/documents/DocumentQuestions.h"
#include "services/documents/DocumentTexts.h"
#include "widgets/AmountField.h"
#include "widgets/Banner.h"
#include "widgets/Card.h"
#include "widgets/DateEditor.h"
#include "widgets/FormRows.h"
#include "widgets/MessageBox.h"
#include "widgets/SectionTitle.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int firstYear = 2000;

} // namespace

AnnualForm::AnnualForm(QWidget* parent)
    : DocumentForm(u"AnnualForm"_s, parent)
{
    body()->addWidget(buildYearCard());
    body()->addWidget(buildItemCard());
    body()->addStretch();

    connect(m_year, &QSpinBox::valueChanged, this, &AnnualForm::onChanged);
    connect(m_year, &QSpinBox::valueChanged, this, &AnnualForm::showExisting);
    connect(m_date, &DateEditor::dateChanged, this, &AnnualForm::onChanged);
    for (QAbstractButton* choice : { static_cast<QAbstractButton*>(m_operatingReport),
             static_cast<QAbstractButton*>(m_financialReport),
             static_cast<QAbstractButton*>(m_kept), static_cast<QAbstractButton*>(m_distributed),
             static_cast<QAbstractButton*>(m_notDecided) })
        connect(choice, &QAbstractButton::toggled, this, &AnnualForm::onChanged);
    connect(m_profit, &AmountField::valueChanged, this, &AnnualForm::onChanged);
    connect(m_method, &QComboBox::currentTextChanged, this, &AnnualForm::onChanged);
    connect(m_others, &FreeItemList::changed, this, &AnnualForm::onChanged);
    onChanged();
}

Card* AnnualForm::buildYearCard()
{
    auto* card = new Card(u"年度与日期"_s, this);
    auto* rows = new FormRows;
    m_year = new QSpinBox(card);
    m_year->setObjectName(u"year"_s);
    m_year->setMinimum(firstYear);
    m_usualYear = m_year->value();
    followYear();
    m_year->setSuffix(u" 年"_s);
    m_date = new DateEditor(DateEditor::Empty::Forbidden, card);
    m_date->setObjectName(u"decisionDate"_s);
    m_date->setToday();
    rows->addRow(u"决定年份"_s, m_year, Required::Yes);
    rows->addRow(u"决定日期"_s, m_date, Required::Yes);
    card->body()->addLayout(rows);
    m_existing = new Banner(BannerKind::Warning, card);
    m_existing->hide();
    card->body()->addWidget(m_existing);
    return card;
}

Card* AnnualForm::buildItemCard()
{
    auto* card = new Card(u"决定事项"_s, this);
    m_operatingReport = new QCheckBox(card);
    m_financialReport = new QCheckBox(card);
    m_operatingReport->setChecked(true);
    m_financialReport->setChecked(true);
    card->body()->addWidget(m_operatingReport);
    card->body()->addWidget(m_financialReport);

    card->body()->addWidget(new SectionTitle(u"利润分配"_s, card));
    m_kept = new QRadioButton(DocumentTexts::profitKept(), card);
    m_distributed = new QRadioButton(u"向股东分配利润"_s, card);
    m_notDecided = new QRadioButton(u"本决定不涉及利润分配"_s, card);
    m_kept->setChecked(true);
    card->body()->addWidget(m_kept);
    card->body()->addWidget(m_distributed);
    m_distribution = buildDistribution();
    card->body()->addWidget(m_distribution);
    card->body()->addWidget(m_notDecided);

    card->body()->addWidget(new SectionTitle(u"其他事项"_s, card));
    m_others = new FreeItemList(u"其他事项"_s, card);
    card->body()->addWidget(m_others);
    return card;
}

QWidget* AnnualForm::buildDistribution()
{
    auto* part = new QWidget(this);
    m_profit = new AmountField(part);
    m_profit->setObjectName(u"profit"_s);
    m_method = new QComboBox(part);
    m_method->setObjectName(u"profitMethod"_s);
    m_method->setEditable(true);
    m_method->setCompleter(nullptr); // would finish words that the user meant otherwise
    m_method->setInsertPolicy(QComboBox::NoInsert);
    m_method->addItems(DocumentTexts::profitMethods());
    m_method->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    auto* rows = new FormRows(part);
    rows->setContentsMargins(24, 0, 0, 0);
    m_capitals
        = rows->addRow(u"分配金额"_s, m_profit, Required::Yes, Money::toChineseUpper(0)).hint;
    rows->addRow(u"分配方式"_s, m_method, Required::Yes,
        u"分配前应先弥补亏损、提取法定公积金，并代扣股东的个人所得税，具体请咨询会计。"_s);
    m_method->lineEdit()->setAccessibleName(u"分配方式"_s);
    return part;
}

void AnnualForm::refresh()
{
    followYear();
    showExisting();
    DocumentForm::refresh();
}

// The year before this one, until another is chosen.
void AnnualForm::followYear()
{
    const int thisYear = QDate::currentDate().year();
    m_year->setMaximum(thisYear);
    const int usualBefore = std::exchange(m_usualYear, thisYear - 1);
    if (m_year->value() == usualBefore)
        m_year->setValue(m_usualYear);
}

void AnnualForm::setYear(int year)
{
    followYear();
    m_year->setValue(year);
}

void AnnualForm::onChanged()
{
    const QStringList reports = DocumentTexts::annualReportItems(m_year->value());
    m_operatingReport->setText(reports.at(0));
    m_financialReport->setText(reports.at(1));
    m_distribution->setVisible(m_distributed->isChecked());
    m_capitals->setText(u"大写：%1"_s.arg(Money::toChineseUpper(m_profit->amountFen())));
    inputChanged();
}

void AnnualForm::showExisting()
{
    m_existing->setText(
        u"%1 年度已经有一份股东决定书，可在文书档案中查看。"_s.arg(m_year->value()));
    m_existing->setVisible(hasDecision().value_or(false));
}

std::optional<bool> AnnualForm::hasDecision()
{
    DocumentDao documents;
    const bool exists = documents.existsAnnualForYear(m_year->value());
    if (!documents.lastError().isEmpty())
        return std::nullopt;
    return exists;
}

AnnualChoices AnnualForm::choices() const
{
    return { .year = m_year->value(),
        .operatingReport = m_operatingReport->isChecked(),
        .financialReport = m_financialReport->isChecked(),
        .profit = m_distributed->isChecked() ? ProfitPlan::Distributed
            : m_kept->isChecked()            ? ProfitPlan::Kept
                                             : ProfitPlan::NotDecided,
        .profitFen = m_profit->amountFen(),
        .method = m_method->currentText(),
        .others = m_others->texts() };
}

AnnualDecisionInput AnnualForm::input() const
{
    return { .year = m_year->value(),
        .items = AnnualItems::sentences(choices()),
        .decisionDate = m_date->date() };
}

QWidget* AnnualForm::firstField() const
{
    return m_year;
}

QString AnnualForm::firstProblem() const
{
    const QString problem = AnnualItems::firstProblem(choices());
    return problem.isEmpty() ? DocumentRules::firstProblem(input(), QDate::currentDate().year())
                             : problem;
}

bool AnnualForm::confirm()
{
    const std::optional<bool> existing = hasDecision();
    if (!existing) {
        MessageBox::warn(this, u"读取失败"_s, u"无法确认该年度是否已有股东决定书，请重试。"_s);
        return false;
    }
    return !*existing
        || MessageBox::ask(this, u"该年度已有决定书"_s,
            DocumentQuestions::secondAnnual(m_year->value()), u"继续生成"_s);
}

QString AnnualForm::previewHtml() const
{
    return DocumentService().preview(input());
}

DocumentResult AnnualForm::generate()
{
    return DocumentService().generateAnnualDecision(input());
}

void AnnualForm::prepareNext()
{
    m_operatingReport->setChecked(true);
    m_financialReport->setChecked(true);
    m_kept->setChecked(true);
    m_profit->setAmountFen(0);
    m_method->setCurrentIndex(0);
    m_others->clear();
    m_date->setToday();
    showExisting();
}

#include "dialogs/ThresholdForm.h"

#include "services/ProfileRules.h"
#include "widgets/AmountField.h"
#include "widgets/FormRows.h"
#include "widgets/MessageBox.h"

#include <QSpinBox>

using namespace Qt::StringLiterals;

namespace {

QSpinBox* countBox(const QString& name, const QString& suffix, QWidget* parent)
{
    auto* box = new QSpinBox(parent);
    box->setObjectName(name);
    // The database accepts no window and no count below 1.
    box->setRange(1, 99'999);
    box->setSuffix(suffix);
    return box;
}

} // namespace

ThresholdForm::ThresholdForm(QWidget* parent)
    : QObject(parent)
    , m_largeAmount(new AmountField(parent))
    , m_windowDays(countBox(u"frequentWindowDays"_s, u" 天"_s, parent))
    , m_count(countBox(u"frequentCount"_s, u" 笔"_s, parent))
{
    m_largeAmount->setObjectName(u"largeAmount"_s);
}

void ThresholdForm::addRows(FormRows* rows)
{
    rows->addRow(u"大额转账标准"_s, m_largeAmount, Required::No,
        u"达到此金额且没有凭证、备注不足 5 字的流水会被标为预警。"_s);
    rows->addRow(
        u"频繁互转统计天数"_s, m_windowDays, Required::No, u"统计连续多少天内的公私往来。"_s);
    rows->addRow(u"频繁互转笔数"_s, m_count, Required::No,
        u"在上述天数内达到这个笔数且没有往来决定书的，会被标为中风险。"_s);
}

void ThresholdForm::show(const CompanyProfile& profile)
{
    m_largeAmount->setAmountFen(profile.largeAmountFen);
    m_windowDays->setValue(profile.frequentWindowDays);
    m_count->setValue(profile.frequentCount);
}

bool ThresholdForm::shows(const CompanyProfile& profile) const
{
    return m_largeAmount->amountFen() == profile.largeAmountFen
        && m_windowDays->value() == profile.frequentWindowDays
        && m_count->value() == profile.frequentCount;
}

bool ThresholdForm::showProblem()
{
    const QString problem = ProfileRules::thresholdProblem(edited({}));
    if (problem.isEmpty())
        return false;
    MessageBox::warn(m_largeAmount->window(), u"请检查填写内容"_s, problem);
    m_largeAmount->setFocus();
    return true;
}

CompanyProfile ThresholdForm::edited(CompanyProfile profile) const
{
    profile.largeAmountFen = m_largeAmount->amountFen();
    profile.frequentWindowDays = m_windowDays->value();
    profile.frequentCount = m_count->value();
    return profile;
}

#include "pages/reports/ReportRange.h"

#include "pages/DateRangeFields.h"
#include "services/figures/Report.h"
#include "widgets/SegmentedControl.h"
#include "widgets/TextRole.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

ReportRange::ReportRange(QWidget* parent)
    : QWidget(parent)
    , m_periods(new SegmentedControl(u"时间范围"_s, this))
    , m_fields(new DateRangeFields(this))
    , m_days(new QLabel(this))
{
    setObjectName(u"reportRange"_s);
    for (const Period period : allValues<Period>())
        m_periods->addSegment(labelOf(period));
    m_periods->addSegment(u"自定义"_s);
    m_periods->setCurrentIndex(static_cast<int>(Period::ThisYear));
    m_fields->hide();
    m_days->setTextFormat(Qt::PlainText);
    setTextRole(m_days, TextRole::Hint);

    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(12);
    line->addWidget(m_periods);
    line->addWidget(m_fields);
    line->addWidget(m_days);
    line->addStretch();
    m_fields->setRange(range());
    refresh();

    connect(m_periods, &SegmentedControl::currentChanged, this, &ReportRange::onPeriodChosen);
    connect(m_fields, &DateRangeFields::rangeChanged, this, &ReportRange::changed);
}

bool ReportRange::isCustom() const
{
    return m_periods->currentIndex() == static_cast<int>(allValues<Period>().size());
}

DateRange ReportRange::range() const
{
    return isCustom()
        ? m_fields->range()
        : rangeOf(static_cast<Period>(m_periods->currentIndex()), QDate::currentDate());
}

QString ReportRange::problem() const
{
    return isCustom() ? m_fields->problem() : QString();
}

void ReportRange::onPeriodChosen()
{
    m_fields->setVisible(isCustom());
    m_days->setVisible(!isCustom());
    if (!isCustom()) {
        // The user's own range starts from the one that was shown last.
        const QSignalBlocker silent(m_fields);
        m_fields->setRange(range());
    }
    emit changed();
}

void ReportRange::refresh()
{
    m_days->setText(ReportTexts::rangeText(range()));
}

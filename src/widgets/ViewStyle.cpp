#include "widgets/ViewStyle.h"

#include "theme/Theme.h"
#include "widgets/RowDelegate.h"
#include "widgets/TableHeader.h"

#include <QCalendarWidget>
#include <QHeaderView>
#include <QLocale>
#include <QTableView>
#include <QTextCharFormat>

namespace {

QTextCharFormat inked(Token token)
{
    QTextCharFormat format;
    format.setForeground(Theme::instance().color(token));
    return format;
}

void colourCalendar(QCalendarWidget* calendar)
{
    calendar->setHeaderTextFormat(inked(Token::TextTertiary));
    for (const Qt::DayOfWeek day : { Qt::Saturday, Qt::Sunday })
        calendar->setWeekdayTextFormat(day, inked(Token::DangerText));
}

} // namespace

namespace ViewStyle {

void setUpTable(QTableView* table, const QString& accessibleName)
{
    table->setAccessibleName(accessibleName);
    table->setHorizontalHeader(new TableHeader(table));
    table->setItemDelegate(new RowDelegate(table));
    table->setAlternatingRowColors(true);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setShowGrid(false);
    table->setWordWrap(false);
    table->setTabKeyNavigation(false);
    table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(rowHeight);
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void setUpCalendar(QCalendarWidget* calendar)
{
    calendar->setLocale(QLocale(QLocale::Chinese, QLocale::China));
    calendar->setFirstDayOfWeek(Qt::Monday);
    calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendar->setGridVisible(false);
    colourCalendar(calendar);
    QObject::connect(
        &Theme::instance(), &Theme::changed, calendar, [calendar] { colourCalendar(calendar); });
}

} // namespace ViewStyle

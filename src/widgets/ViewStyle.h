#pragma once

#include <QString>

class QCalendarWidget;
class QTableView;

/// Settings of views that a style sheet cannot make.
namespace ViewStyle {

inline constexpr int rowHeight = 36;

/// Rows of 36 px, whole rows selected, second rows tinted, no grid, Tab leaves the table,
/// cells drawn by a RowDelegate.
void setUpTable(QTableView* table, const QString& accessibleName);

/// Chinese, weeks start on Monday; the weekend and the head follow the theme.
void setUpCalendar(QCalendarWidget* calendar);

} // namespace ViewStyle

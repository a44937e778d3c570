#pragma once

#include <QDateTime>

/// The calendar of the demo. Records carry the time at which they were stored, and pages ask for
/// the present day; so that every run shows the same, the program's own calendar clock stands at a
/// time that the demo sets. Timers run on another clock and go on as usual.
namespace DemoClock {

/// The day on which the pictures are taken.
QDate today();

/// Lets the calendar stand at this local time from now on.
void set(const QDateTime& time);

/// Lets it stand at an hour of a day.
void set(QDate day, int hour, int minute = 0);

/// Whether the program really sees the time that was set: only where the C library's clock can be
/// replaced.
bool isObeyed();

} // namespace DemoClock

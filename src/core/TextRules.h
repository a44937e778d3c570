#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringView>

/// The rules for texts and dates that forms, stores and documents share.
namespace TextRules {

/// Length as a person counts it: characters (code points), so an emoji counts once although it
/// takes two UTF-16 units.
qsizetype characterCount(QStringView text);

/// One of the invisible characters that change a text's direction: marks, embeddings, overrides,
/// isolates. They turn around whatever stands beside the text in a sentence, and make paper show
/// another order of letters than the one that is stored.
bool isDirectionMark(QChar c);

QString withoutDirectionMarks(QString text);

/// Nothing to be seen: white space (the ideographic space included) and direction marks at most.
bool isBlank(const QString& text);

/// A text that somebody entered as it is stored: without direction marks, then trimmed.
QString asStored(const QString& text);

/// The same with a blank where a line was broken: what is pasted into a field of one line may hold
/// several. Blanks within a line stay as they are.
QString oneLine(const QString& text);

/// Whether a text contains a keyword in whatever case, leaving direction marks out of account.
bool holds(const QString& text, const QString& keyword);

/// "yyyy-MM-dd", the only form in which dates are stored and compared; empty for an unset date.
QString dateText(QDate date);

/// The date of a stored "yyyy-MM-dd" text; an invalid date when the text is anything else.
QDate dateFromText(QStringView text);

/// The date that a person typed: 2025-02-03, 20250203, 2025/2/3 or 2025.2.3, with white space
/// around it; full-width digits and separators count as their plain ones. Invalid for anything
/// else and before the year 1900.
QDate dateFromInput(QStringView text);

/// "yyyy-MM-dd HH:mm:ss" in local time, the form of every stored time stamp.
QString timestampText(const QDateTime& time);

/// The current local time as a stored time stamp.
QString currentTimestamp();

} // namespace TextRules

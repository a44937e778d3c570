#pragma once

#include <QString>

class QSqlError;

/// What a failed statement is called before the user: for what can happen to any file (held by
/// another program, read-only, full or broken disk) a Chinese reason with SQLite's own in
/// brackets, else SQLite's own alone.
QString sqlErrorText(const QSqlError& error);

#include "db/Connection.h"

namespace Connection {

QSqlDatabase current()
{
    return QSqlDatabase::database(name(), false);
}

QString name()
{
    return QString::fromLatin1(QSqlDatabase::defaultConnection);
}

} // namespace Connection

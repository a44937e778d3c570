#include "db/SerialCode.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace SerialCode {

QString text(const QString& prefix, qint64 sequence)
{
    return prefix + u"%1"_s.arg(std::max<qint64>(sequence, 1), 4, 10, QChar(u'0'));
}

} // namespace SerialCode

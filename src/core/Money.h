#pragma once

#include <QString>
#include <QtGlobal>

/// The only way between amounts and texts. Amounts are fen (1/100 yuan) everywhere.
namespace Money {

/// Fen of a yuan value, halves away from zero; the nearest number of fen when it has none.
qint64 fromYuan(double yuan);

/// "1,234.56"; "-" in front of negative amounts; never a unit.
QString format(qint64 fen);

/// "1234.56", for files that programs read and for amount fields.
QString formatPlain(qint64 fen);

/// Chinese capital numerals as documents carry them, such as 壹佰万零伍元整 for 1,000,005.00:
/// 正楷 numerals with 元, 角, 分 and 整 as the Basic Accounting Work Rules (会计基础工作规范)
/// ask for.
QString toChineseUpper(qint64 fen);

} // namespace Money

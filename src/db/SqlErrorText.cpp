#include "db/SqlErrorText.h"

#include <QSqlError>

#include <array>

using namespace Qt::StringLiterals;

namespace {

struct Reason {
    int code; // primary result code of SQLite
    QStringView text;
};

constexpr auto reasons = std::to_array<Reason>({
    { 5, u"数据库正被其他程序占用，请关闭该程序后重试" }, // SQLITE_BUSY
    { 8, u"数据库文件为只读，无法保存" }, // SQLITE_READONLY
    { 10, u"数据库文件读写失败，请检查磁盘" }, // SQLITE_IOERR
    { 11, u"数据库文件已损坏" }, // SQLITE_CORRUPT
    { 13, u"磁盘空间不足" }, // SQLITE_FULL
});

} // namespace

QString sqlErrorText(const QSqlError& error)
{
    // The lowest byte is the primary code, the higher ones refine it.
    const int code = error.nativeErrorCode().toInt() & 0xff;
    for (const Reason& reason : reasons) {
        if (reason.code == code)
            return u"%1（%2）"_s.arg(reason.text, error.databaseText().trimmed());
    }
    return error.text();
}

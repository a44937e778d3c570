#include "services/backup/BackupSample.h"

#include "core/AppPaths.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace BackupSample {

namespace {

QString digestOf(const QMap<QString, QByteArray>& content)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (auto item = content.begin(); item != content.end(); ++item)
        hash.addData(item.key().toUtf8() + '=' + item.value() + '\n');
    return QString::fromLatin1(hash.result().toHex().first(8));
}

} // namespace

bool put(const QString& path, const QByteArray& bytes)
{
    return QDir().mkpath(QFileInfo(path).path()) && TestFile::put(path, bytes);
}

bool fill(const QString& side)
{
    const QString vouchers = AppPaths::voucherAssetsDir();
    for (const QString& name : { u"/side"_s, u"/2025/票据 1.pdf"_s, u"/2025/01/it's \"100%\".jpg"_s,
             u"/.hidden"_s, u"/2025/.folder/合同"_s }) {
        if (!put(vouchers + name, (side + name).toUtf8()))
            return false;
    }
    return QDir().mkpath(vouchers + u"/空"_s)
        && TestDatabase::run(
            {
                u"UPDATE company_profile SET company_name = '%1'"_s.arg(side),
                u"INSERT INTO transactions (trans_date, summary, direction, "
                "amount_fen, owner_account_type, counterparty_name, category) "
                "VALUES ('2025-01-31', '%1', 'in', 100, 'company', '乙', 'other'),"
                " ('2025-03-02', '%1', 'out', 200, 'company', '乙', 'other')"_s.arg(side),
                u"INSERT INTO vouchers (name, voucher_type, voucher_date, "
                "original_file_name, stored_path, file_ext, file_size, sha256) "
                "VALUES ('票据', 'invoice', '2025-01-31', 'a.pdf', "
                "'voucher_assets/2025/票据 1.pdf', 'pdf', 1, 'x')"_s,
            })
               .isEmpty();
}

QMap<QString, QByteArray> tree(const QString& folder)
{
    QMap<QString, QByteArray> content;
    const auto everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    QDirIterator items(folder, everything, QDirIterator::Subdirectories);
    while (items.hasNext()) {
        const QString path = items.next();
        const QString name = path.sliced(folder.size() + 1);
        const QFileInfo info = items.fileInfo();
        if (info.isSymLink())
            content.insert(name, "-> " + info.symLinkTarget().toUtf8());
        else if (info.isDir())
            content.insert(name + u'/', QByteArray());
        else
            content.insert(name, TestFile::bytesOf(path));
    }
    return content;
}

QString signature()
{
    const QMap<QString, QByteArray> vouchers = tree(AppPaths::voucherAssetsDir());
    const QStringList parts { TestDatabase::row(u"SELECT company_name FROM company_profile"_s),
        TestDatabase::row(u"SELECT group_concat(summary) FROM transactions"_s),
        QString::fromUtf8(vouchers.value(u"side"_s)), digestOf(vouchers),
        TestDatabase::row(u"PRAGMA integrity_check"_s) };
    return parts.join(u' ');
}

QStringList strangersInDataDir()
{
    QStringList names = QDir(AppPaths::dataDir())
                            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QString& known :
        { u"brixa.db"_s, u"brixa.db-wal"_s, u"brixa.db-shm"_s, u"voucher_assets"_s, u"exports"_s,
            u"backups"_s, u"logs"_s, u"auto_backup_before_restore"_s })
        names.removeAll(known);
    return names;
}

} // namespace BackupSample

#include "stress/StressFacts.h"

#include "core/AppPaths.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"

#include <QCryptographicHash>
#include <QDir>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace StressFacts {

namespace {

QString joined(QList<qint64> numbers)
{
    std::sort(numbers.begin(), numbers.end());
    QStringList texts;
    for (const qint64 number : numbers)
        texts += QString::number(number);
    return texts.join(u',');
}

} // namespace

QString noteOf(const Transaction& entry, QList<qint64> voucherIds)
{
    const QString fields = QStringList { entry.transDate.toString(Qt::ISODate), entry.summary,
        codeOf(entry.direction), QString::number(entry.amountFen), codeOf(entry.ownerAccountType),
        entry.counterpartyName, codeOf(entry.counterpartyAccountType), codeOf(entry.category),
        joined(std::move(voucherIds)) }
                               .join(u'|');
    return u"sum:"_s + digest(fields.toUtf8());
}

QList<qint64> vouchersOf(qint64 entryId)
{
    return ids(u"SELECT source_id FROM entity_links WHERE source_type = 'voucher' AND target_type "
               "= 'transaction' AND target_id = %1"_s.arg(entryId));
}

QString linksNote(QList<qint64> entryIds)
{
    return u"links:"_s + joined(std::move(entryIds));
}

QList<qint64> entriesOf(qint64 voucherId)
{
    return ids(u"SELECT target_id FROM entity_links WHERE source_type = 'voucher' AND target_type "
               "= 'transaction' AND source_id = %1"_s.arg(voucherId));
}

QByteArray signedCopy()
{
    return "%PDF-1.4 signed by hand";
}

QString digest(const QByteArray& bytes)
{
    return QString::fromLatin1(
        QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex().first(16));
}

QString dataSignature()
{
    QStringList all;
    for (const QString& sql : { u"SELECT id, note FROM transactions ORDER BY id"_s,
             u"SELECT id, name, note, sha256, stored_path FROM vouchers ORDER BY id"_s,
             u"SELECT doc_no, content_html FROM documents ORDER BY doc_no"_s,
             u"SELECT source_type, source_id, target_type, target_id FROM entity_links "
             "ORDER BY 1, 2, 3, 4"_s,
             u"SELECT company_name FROM company_profile"_s })
        all += TestDatabase::rows(sql);
    const QDir assets(AppPaths::voucherAssetsDir());
    for (const QString& name : assets.entryList(QDir::Files | QDir::Hidden, QDir::Name))
        all += name + digest(TestFile::bytesOf(assets.filePath(name)));
    return digest(all.join(u'\n').toUtf8());
}

QStringList levels()
{
    return TestDatabase::rows(
        u"SELECT id, risk_level, risk_auto_level, risk_reasons FROM transactions ORDER BY id"_s);
}

QList<qint64> ids(const QString& sql)
{
    QList<qint64> found;
    for (const QString& row : TestDatabase::rows(sql))
        found += row.toLongLong();
    return found;
}

} // namespace StressFacts

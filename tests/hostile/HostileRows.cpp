#include "hostile/HostileRows.h"

#include "db/Connection.h"
#include "support/TestDatabase.h"

#include <QSqlError>
#include <QSqlQuery>

#include <limits>

using namespace Qt::StringLiterals;

namespace HostileRows {

namespace {

constexpr auto largest = std::numeric_limits<qint64>::max();
constexpr qint64 enormous = 9'000'000'000'000'000'000;
constexpr qint64 exactOnlyAsInteger = 12'345'678'901'234'567;
constexpr auto smallest = std::numeric_limits<qint64>::min();

QVariant pick(const QVariantList& values, qsizetype i)
{
    return values.at(i % values.size());
}

QString insertEntry(qsizetype i, const QVariant& text)
{
    static const QVariantList dates { u"2025-02-30"_s, u"2025-01-05"_s, u""_s, 20250102,
        u"0001-01-01"_s, u"9999-12-31"_s };
    static const QVariantList amounts { enormous, enormous, largest, smallest, -700, 0, u"viel"_s,
        1e30, 12'345 };
    const QString list = u"[\"%1\",\"%2\"]"_s.arg(markup, u"&amp;%1"_s);
    const QVariantList reasons { list, u"[broken"_s, u"{\"a\":1}"_s, u"[1,null,[2]]"_s, text };
    static const QVariantList codes { u"in"_s, u"out"_s, u"sideways"_s };
    return insert(u"transactions"_s,
        { { u"id"_s, i - 3 }, { u"trans_date"_s, pick(dates, i) }, { u"summary"_s, text },
            { u"direction"_s, pick(codes, i / 2) }, { u"amount_fen"_s, pick(amounts, i) },
            { u"owner_account_type"_s, pick({ u"company"_s, u"bank"_s }, i) },
            { u"counterparty_name"_s, text },
            { u"counterparty_account_type"_s, pick({ u"private"_s, u"moon"_s }, i) },
            { u"category"_s, pick({ u"shareholder_in"_s, u"shareholder_out"_s, u"gift"_s }, i) },
            { u"project_id"_s, i - 3 }, { u"note"_s, text },
            { u"risk_level"_s, pick({ u"high"_s, u"severe"_s, u"low"_s }, i) },
            { u"risk_reasons"_s, pick(reasons, i) },
            { u"risk_manual_override"_s, pick({ QVariant(), u"high"_s, u"worse"_s }, i) },
            { u"risk_manual_note"_s, text } });
}

QString insertProject(qsizetype i, const QVariant& text)
{
    const QVariantList budgets { largest, -5, u"much"_s, exactOnlyAsInteger, QVariant() };
    const QString code = u"<b>%1"_s.arg(i);
    const QString error = insert(u"projects"_s,
        { { u"id"_s, i - 3 }, { u"name"_s, text }, { u"code"_s, code }, { u"client_name"_s, text },
            { u"status"_s, pick({ u"lost"_s, u"ongoing"_s }, i) }, { u"start_date"_s, text },
            { u"end_date"_s, u"2025-02-30"_s }, { u"budget_fen"_s, pick(budgets, i) },
            { u"manager"_s, text }, { u"note"_s, text } });
    if (!error.isEmpty())
        return error;
    return insert(u"contracts"_s,
        { { u"project_id"_s, i - 3 }, { u"name"_s, text }, { u"code"_s, code },
            { u"party_b"_s, text }, { u"amount_fen"_s, pick(budgets.first(4), i) },
            { u"sign_date"_s, text }, { u"status"_s, u"lost"_s }, { u"note"_s, text } });
}

QString insertVoucher(qsizetype i, const QVariant& text)
{
    const QVariantList paths { u"../../a"_s, u"/etc/passwd"_s, u"voucher_assets/../brixa.db"_s,
        u"voucher_assets"_s, u""_s, text };
    return insert(u"vouchers"_s,
        { { u"id"_s, i - 3 }, { u"name"_s, text }, { u"voucher_type"_s, u"video"_s },
            { u"voucher_date"_s, u"never"_s }, { u"original_file_name"_s, text },
            { u"stored_path"_s, pick(paths, i) }, { u"file_ext"_s, pick({ u"pdf"_s, text }, i) },
            { u"file_size"_s, pick({ largest, -3 }, i) }, { u"sha256"_s, text },
            { u"note"_s, text } });
}

QString insertDocument(qsizetype i, const QVariant& text)
{
    const QVariantList items { u"[\"-3\",\"x\"]"_s, u"[broken"_s, u"{}"_s, text };
    return insert(u"documents"_s,
        { { u"id"_s, i - 3 }, { u"doc_type"_s, pick({ u"fund_decision"_s, u"will"_s }, i) },
            { u"doc_no"_s, u"<b>%1"_s.arg(i) }, { u"title"_s, text },
            { u"doc_year"_s, pick({ -1, largest, u"MMXXV"_s }, i) },
            { u"doc_date"_s, pick({ u"2025-01-01"_s, u"x"_s }, i) },
            { u"fund_direction"_s, u"sideways"_s }, { u"fund_nature"_s, text },
            { u"settle_date"_s, text }, { u"extra_text"_s, text },
            { u"selected_items"_s, pick(items, i) }, { u"content_html"_s, text },
            { u"file_path"_s, pick({ u"/etc/passwd"_s, u"C:\\a\\..\\"_s, text }, i) } });
}

QString insertLinks(qsizetype i)
{
    for (const auto& [source, target] : { std::pair(u"voucher"_s, u"transaction"_s),
             std::pair(u"voucher"_s, u"project"_s), std::pair(u"voucher"_s, u"contract"_s),
             std::pair(u"document"_s, u"transaction"_s), std::pair(u"letter"_s, u"moon"_s) }) {
        const QString error = insert(u"entity_links"_s,
            { { u"source_type"_s, source }, { u"source_id"_s, i - 3 }, { u"target_type"_s, target },
                { u"target_id"_s, i - 3 } });
        if (!error.isEmpty())
            return error;
    }
    return {};
}

} // namespace

QList<QVariant> texts()
{
    const QString marked = markup + u"<img src='/etc/passwd'><a href='x'>%1 %2 %L3</a>&amp;&lt;"_s;
    return { marked, u"\"双\"'单'「」, ;"_s, u"一\n二\r\n三\t四\u2028五"_s,
        u"\u202e反转\u2066\u200f\u202c"_s, u"😀👩‍👩‍👧‍👦🇨🇳"_s,
        QByteArray("\xed\xa0\x80半\xed\xb0\x80"), QByteArray("不\xff\xfe\xc3"),
        QByteArray("空\0字", 7), QString(10'000, u'长'), QString(markup + u' ').repeated(1200),
        u"=1+cmd|' /C calc'!A0"_s, u"@SUM(A1)"_s, u""_s, u"　"_s };
}

QString insert(const QString& table, const QVariantMap& values)
{
    QStringList places;
    for (const QVariant& value : values)
        places += value.typeId() == QMetaType::QByteArray ? u"CAST(? AS TEXT)"_s : u"?"_s;
    QSqlQuery query(Connection::current());
    query.prepare(u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(
        table, QStringList(values.keys()).join(u','), places.join(u',')));
    for (const QVariant& value : values)
        query.addBindValue(value);
    return query.exec() ? QString() : query.lastError().text();
}

QString fill()
{
    QString error = TestDatabase::run(
        { u"PRAGMA ignore_check_constraints = ON"_s, u"PRAGMA foreign_keys = OFF"_s,
            u"UPDATE company_profile SET company_name = '%1', shareholder_name = '%1', "
            "large_amount_fen = -1, frequent_window_days = 99999999999, last_backup_at = '%1', "
            "address = '%1', bank_name = '%1'"_s.arg(markup) });
    const QList<QVariant> all = texts();
    for (qsizetype i = 0; i < all.size() && error.isEmpty(); ++i) {
        for (const auto& insertRow :
            { insertEntry, insertProject, insertVoucher, insertDocument }) {
            if (error.isEmpty())
                error = insertRow(i, all.at(i));
        }
        if (error.isEmpty())
            error = insertLinks(i);
    }
    return error;
}

QList<qint64> ids(const QString& table)
{
    QList<qint64> all;
    for (const QString& row : TestDatabase::rows(u"SELECT id FROM %1"_s.arg(table)))
        all += row.toLongLong();
    return all;
}

} // namespace HostileRows

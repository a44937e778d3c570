#include "db/DocumentDao.h"

#include "db/SerialCode.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto documentColumns = std::to_array<Column<DocumentRecord>>({
    column<&DocumentRecord::id>(u"id"),
    column<&DocumentRecord::docType>(u"doc_type"),
    column<&DocumentRecord::docNo>(u"doc_no"),
    column<&DocumentRecord::title>(u"title"),
    column<&DocumentRecord::docYear>(u"doc_year"),
    column<&DocumentRecord::docDate>(u"doc_date"),
    column<&DocumentRecord::fundDirection>(u"fund_direction"),
    column<&DocumentRecord::fundNature>(u"fund_nature"),
    column<&DocumentRecord::settleDate>(u"settle_date"),
    column<&DocumentRecord::extraText>(u"extra_text"),
    column<&DocumentRecord::selectedItems>(u"selected_items"),
    column<&DocumentRecord::contentHtml>(u"content_html"),
    column<&DocumentRecord::filePath>(u"file_path"),
    column<&DocumentRecord::createdAt>(u"created_at"),
});

QString numberCode(DocType type)
{
    switch (type) {
    case DocType::AnnualDecision:
        return u"ND"_s;
    case DocType::FundDecision:
        return u"FD"_s;
    case DocType::IndependenceStatement:
        return u"DC"_s;
    }
    return u"XX"_s;
}

} // namespace

QList<DocumentRecord> DocumentDao::list(std::optional<DocType> type)
{
    if (!type)
        return readAll<DocumentRecord>(
            documentColumns, u"SELECT * FROM documents ORDER BY id DESC"_s, {});
    return readAll<DocumentRecord>(documentColumns,
        u"SELECT * FROM documents WHERE doc_type = :type ORDER BY id DESC"_s,
        { { u":type"_s, codeOf(*type) } });
}

QList<DocumentRecord> DocumentDao::listWithoutContent()
{
    return readAll<DocumentRecord>(documentColumns,
        u"SELECT id, doc_type, doc_no, title, doc_year, doc_date, fund_direction, fund_nature, "
        "settle_date, extra_text, selected_items, file_path, created_at FROM documents "
        "ORDER BY id DESC"_s,
        {});
}

std::optional<DocumentRecord> DocumentDao::findById(qint64 id)
{
    return readOne<DocumentRecord>(
        documentColumns, u"SELECT * FROM documents WHERE id = :id"_s, { { u":id"_s, id } });
}

bool DocumentDao::existsAnnualForYear(int year)
{
    return readCount(u"SELECT COUNT(*) FROM documents WHERE doc_type = 'annual_decision' AND "
                     "doc_year = :y"_s,
               { { u":y"_s, year } })
        > 0;
}

bool DocumentDao::insert(DocumentRecord& document)
{
    return insertRow(
        u"INSERT INTO documents (doc_type, doc_no, title, doc_year, doc_date, fund_direction, "
        "fund_nature, settle_date, extra_text, selected_items, content_html, file_path) VALUES "
        "(:doc_type, :doc_no, :title, :doc_year, :doc_date, :fund_direction, :fund_nature, "
        ":settle_date, :extra_text, :selected_items, :content_html, :file_path)"_s,
        {
            { u":doc_type"_s, codeOf(document.docType) },
            { u":doc_no"_s, notNull(document.docNo) },
            { u":title"_s, notNull(document.title) },
            { u":doc_year"_s, document.docYear < 1 ? QVariant() : QVariant(document.docYear) },
            { u":doc_date"_s, dateOrNull(document.docDate) },
            { u":fund_direction"_s, codeOrNull(document.fundDirection) },
            { u":fund_nature"_s, nullIfEmpty(document.fundNature) },
            { u":settle_date"_s, dateOrNull(document.settleDate) },
            { u":extra_text"_s, nullIfEmpty(document.extraText) },
            { u":selected_items"_s, nullIfEmpty(document.selectedItems) },
            { u":content_html"_s, notNull(document.contentHtml) },
            { u":file_path"_s, notNull(document.filePath) },
        },
        document.id);
}

bool DocumentDao::updateContent(qint64 id, const QString& html)
{
    return write(u"UPDATE documents SET content_html = :html WHERE id = :id"_s,
        { { u":html"_s, notNull(html) }, { u":id"_s, id } });
}

bool DocumentDao::remove(qint64 id)
{
    return write(u"DELETE FROM documents WHERE id = :id"_s, { { u":id"_s, id } });
}

QString DocumentDao::nextDocNo(DocType type, int year)
{
    const QString prefix = u"KYR-%1-%2-"_s.arg(numberCode(type), QString::number(year));
    // Not logged: forms ask for a number while they are being filled in, and a document whose
    // number could not be found out is refused when it is stored.
    QSqlQuery query = newQuery();
    query.prepare(u"SELECT COALESCE(MAX(CAST(substr(doc_no, -4) AS INTEGER)), 0) + 1 AS next_seq "
                  "FROM documents WHERE doc_no LIKE :pattern"_s);
    query.bindValue(u":pattern"_s, prefix + u'%');
    const bool found = query.exec() && query.next();
    return SerialCode::text(prefix, found ? query.value(0).toLongLong() : 1);
}

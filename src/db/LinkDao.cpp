#include "db/LinkDao.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto linkColumns = std::to_array<Column<EntityLink>>({
    column<&EntityLink::id>(u"id"),
    column<&EntityLink::sourceType>(u"source_type"),
    column<&EntityLink::sourceId>(u"source_id"),
    column<&EntityLink::targetType>(u"target_type"),
    column<&EntityLink::targetId>(u"target_id"),
    column<&EntityLink::createdAt>(u"created_at"),
});

bool isAllowed(SourceType sourceType, TargetType targetType)
{
    return targetType == TargetType::Transaction || targetType == TargetType::Project
        || sourceType == SourceType::Voucher;
}

} // namespace

bool LinkDao::link(SourceType sourceType, qint64 sourceId, TargetType targetType, qint64 targetId)
{
    // OR IGNORE also passes over a failed CHECK, so ids are looked at here.
    if (!isAllowed(sourceType, targetType) || sourceId <= 0 || targetId <= 0) {
        qWarning("Rejected entity_link combo: %s/%lld -> %s/%lld",
            qUtf8Printable(codeOf(sourceType)), sourceId, qUtf8Printable(codeOf(targetType)),
            targetId);
        return fail(u"非法的关联组合"_s);
    }
    return write(u"INSERT OR IGNORE INTO entity_links (source_type, source_id, target_type, "
                 "target_id) VALUES (:st, :si, :tt, :ti)"_s,
        pairBindings(sourceType, sourceId, targetType, targetId));
}

bool LinkDao::unlink(SourceType sourceType, qint64 sourceId, TargetType targetType, qint64 targetId)
{
    return write(u"DELETE FROM entity_links WHERE source_type = :st AND source_id = :si AND "
                 "target_type = :tt AND target_id = :ti"_s,
        pairBindings(sourceType, sourceId, targetType, targetId));
}

bool LinkDao::unlinkAllFromSource(SourceType sourceType, qint64 sourceId)
{
    return write(u"DELETE FROM entity_links WHERE source_type = :st AND source_id = :si"_s,
        { { u":st"_s, codeOf(sourceType) }, { u":si"_s, sourceId } });
}

QList<EntityLink> LinkDao::linksBySource(SourceType sourceType, qint64 sourceId)
{
    return readAll<EntityLink>(linkColumns,
        u"SELECT * FROM entity_links WHERE source_type = :st AND source_id = :si ORDER BY id"_s,
        { { u":st"_s, codeOf(sourceType) }, { u":si"_s, sourceId } });
}

QList<EntityLink> LinkDao::linksByTarget(TargetType targetType, qint64 targetId)
{
    return readAll<EntityLink>(linkColumns,
        u"SELECT * FROM entity_links WHERE target_type = :tt AND target_id = :ti ORDER BY id"_s,
        { { u":tt"_s, codeOf(targetType) }, { u":ti"_s, targetId } });
}

int LinkDao::countVouchersFor(TargetType targetType, qint64 targetId)
{
    return readCount(u"SELECT COUNT(*) FROM entity_links WHERE source_type='voucher' AND "
                     "target_type = :tt AND target_id = :ti"_s,
        { { u":tt"_s, codeOf(targetType) }, { u":ti"_s, targetId } });
}

QSet<qint64> LinkDao::fundDecisionTransactionIds()
{
    QSet<qint64> ids;
    QSqlQuery query = newQuery();
    if (!run(query,
            u"SELECT DISTINCT el.target_id FROM entity_links el JOIN documents d ON d.id = "
            "el.source_id WHERE el.source_type = 'document' AND el.target_type = 'transaction' AND "
            "d.doc_type = 'fund_decision'"_s,
            {}))
        return ids;
    while (query.next())
        ids.insert(query.value(0).toLongLong());
    if (!readToTheEnd(query))
        ids.clear();
    return ids;
}

int LinkDao::countFundDecisionsFor(qint64 transactionId)
{
    return readCount(
        u"SELECT COUNT(*) FROM entity_links el JOIN documents d ON d.id = el.source_id WHERE "
        "el.source_type = 'document' AND el.target_type = 'transaction' AND el.target_id = :ti AND "
        "d.doc_type = 'fund_decision'"_s,
        { { u":ti"_s, transactionId } });
}

BaseDao::Bindings LinkDao::pairBindings(
    SourceType sourceType, qint64 sourceId, TargetType targetType, qint64 targetId)
{
    return {
        { u":st"_s, codeOf(sourceType) },
        { u":si"_s, sourceId },
        { u":tt"_s, codeOf(targetType) },
        { u":ti"_s, targetId },
    };
}

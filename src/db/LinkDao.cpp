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

constexpr auto targetColumns = std::to_array<Column<VoucherTarget>>({
    column<&VoucherTarget::voucherId>(u"voucher_id"),
    column<&VoucherTarget::targetId>(u"target_id"),
    column<&VoucherTarget::name>(u"name"),
});

// Ids as one value, so that a whole archive needs no more placeholders than one voucher.
QString jsonOf(const QList<qint64>& ids)
{
    QStringList numbers;
    for (const qint64 id : ids)
        numbers += QString::number(id);
    return u'[' + numbers.join(u',') + u']';
}

QString targetStatement(TargetType kind)
{
    const QString head = u"SELECT l.source_id AS voucher_id, l.target_id"_s;
    const QString tail = u" WHERE l.source_type = 'voucher' AND l.target_type = :tt AND "
                         "l.source_id IN (SELECT value FROM json_each(:ids)) ORDER BY l.id"_s;
    if (kind == TargetType::Transaction)
        return head + u" FROM entity_links l"_s + tail;
    const QString table = kind == TargetType::Project ? u"projects"_s : u"contracts"_s;
    return head + u", t.name FROM entity_links l LEFT JOIN %1 t ON t.id = l.target_id"_s.arg(table)
        + tail;
}

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

std::optional<QList<VoucherTarget>> LinkDao::voucherTargets(
    TargetType kind, const QList<qint64>& voucherIds)
{
    QList<VoucherTarget> targets;
    QSqlQuery query = newQuery();
    if (!run(query, targetStatement(kind),
            { { u":tt"_s, codeOf(kind) }, { u":ids"_s, jsonOf(voucherIds) } }))
        return {};
    const RecordReader<VoucherTarget> reader(targetColumns, query);
    while (query.next())
        reader.fill(query, targets.emplaceBack());
    if (!readToTheEnd(query))
        return {};
    return targets;
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

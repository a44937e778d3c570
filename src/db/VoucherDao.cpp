#include "db/VoucherDao.h"

#include "core/TextRules.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto voucherColumns = std::to_array<Column<Voucher>>({
    column<&Voucher::id>(u"id"),
    column<&Voucher::name>(u"name"),
    column<&Voucher::voucherType>(u"voucher_type"),
    column<&Voucher::voucherDate>(u"voucher_date"),
    column<&Voucher::originalFileName>(u"original_file_name"),
    column<&Voucher::storedPath>(u"stored_path"),
    column<&Voucher::fileExt>(u"file_ext"),
    column<&Voucher::fileSize>(u"file_size"),
    column<&Voucher::sha256>(u"sha256"),
    column<&Voucher::note>(u"note"),
    column<&Voucher::createdAt>(u"created_at"),
});

QString linkCondition(VoucherFilter::LinkState state)
{
    switch (state) {
    case VoucherFilter::LinkState::All:
        break;
    case VoucherFilter::LinkState::Linked:
        return u" AND EXISTS (SELECT 1 FROM entity_links l WHERE l.source_type='voucher' AND "
               "l.source_id=v.id)"_s;
    case VoucherFilter::LinkState::Unlinked:
        return u" AND NOT EXISTS (SELECT 1 FROM entity_links l WHERE l.source_type='voucher' AND "
               "l.source_id=v.id)"_s;
    }
    return {};
}

} // namespace

QList<Voucher> VoucherDao::search(const VoucherFilter& filter)
{
    const Conditions conditions = conditionsOf(filter);
    return readAll<Voucher>(voucherColumns,
        u"SELECT v.* FROM vouchers v WHERE 1=1"_s + conditions.sql + linkCondition(filter.linkState)
            + u" ORDER BY v.voucher_date DESC, v.id DESC"_s,
        conditions.bindings);
}

QList<Voucher> VoucherDao::listByContract(qint64 contractId)
{
    return readAll<Voucher>(voucherColumns,
        u"SELECT v.* FROM vouchers v WHERE EXISTS (SELECT 1 FROM entity_links l WHERE "
        "l.source_type='voucher' AND l.source_id=v.id AND l.target_type='contract' AND "
        "l.target_id=:cid) ORDER BY v.voucher_date DESC, v.id DESC"_s,
        { { u":cid"_s, contractId } });
}

std::optional<Voucher> VoucherDao::findById(qint64 id)
{
    return readOne<Voucher>(
        voucherColumns, u"SELECT * FROM vouchers WHERE id = :id"_s, { { u":id"_s, id } });
}

int VoucherDao::countAll()
{
    return readCount(u"SELECT COUNT(*) FROM vouchers"_s, {});
}

int VoucherDao::countUnlinked()
{
    return readCount(
        u"SELECT COUNT(*) FROM vouchers v WHERE NOT EXISTS (SELECT 1 FROM entity_links l WHERE "
        "l.source_type='voucher' AND l.source_id=v.id)"_s,
        {});
}

bool VoucherDao::existsBySha256(const QString& hash)
{
    return readCount(u"SELECT COUNT(*) FROM vouchers WHERE sha256 = :h"_s, { { u":h"_s, hash } })
        > 0;
}

bool VoucherDao::isFileInUse(const QString& storedPath)
{
    return readNumber(u"SELECT COUNT(*) FROM vouchers WHERE stored_path = :p"_s,
               { { u":p"_s, storedPath } })
        != 0;
}

bool VoucherDao::insert(Voucher& voucher)
{
    return insertRow(
        u"INSERT INTO vouchers (name, voucher_type, voucher_date, original_file_name, stored_path, "
        "file_ext, file_size, sha256, note) VALUES (:name, :voucher_type, :voucher_date, "
        ":original_file_name, :stored_path, :file_ext, :file_size, :sha256, :note)"_s,
        {
            { u":name"_s, notNull(voucher.name) },
            { u":voucher_type"_s, codeOf(voucher.voucherType) },
            { u":voucher_date"_s, dateOrNull(voucher.voucherDate) },
            { u":original_file_name"_s, notNull(voucher.originalFileName) },
            { u":stored_path"_s, notNull(voucher.storedPath) },
            { u":file_ext"_s, notNull(voucher.fileExt) },
            { u":file_size"_s, voucher.fileSize },
            { u":sha256"_s, notNull(voucher.sha256) },
            { u":note"_s, nullIfEmpty(voucher.note) },
        },
        voucher.id);
}

bool VoucherDao::update(const Voucher& voucher)
{
    return write(u"UPDATE vouchers SET name = :name, voucher_type = :vtype, voucher_date = :vdate, "
                 "note = :note WHERE id = :id"_s,
        {
            { u":name"_s, notNull(voucher.name) },
            { u":vtype"_s, codeOf(voucher.voucherType) },
            { u":vdate"_s, dateOrNull(voucher.voucherDate) },
            { u":note"_s, nullIfEmpty(voucher.note) },
            { u":id"_s, voucher.id },
        });
}

bool VoucherDao::remove(qint64 id)
{
    return write(u"DELETE FROM vouchers WHERE id = :id"_s, { { u":id"_s, id } });
}

BaseDao::Conditions VoucherDao::conditionsOf(const VoucherFilter& filter)
{
    Conditions conditions;
    if (filter.type)
        conditions.add(u" AND v.voucher_type = :vtype"_s, u":vtype"_s, codeOf(*filter.type));
    if (!TextRules::isBlank(filter.keyword))
        conditions.add(
            u" AND (v.name LIKE :kw OR v.original_file_name LIKE :kw OR v.note LIKE :kw)"_s,
            u":kw"_s, containing(filter.keyword.trimmed()));
    if (filter.projectId > 0)
        conditions.add(
            u" AND EXISTS (SELECT 1 FROM entity_links l WHERE l.source_type='voucher' AND "
            "l.source_id=v.id AND l.target_type='project' AND l.target_id=:pid)"_s,
            u":pid"_s, filter.projectId);
    return conditions;
}

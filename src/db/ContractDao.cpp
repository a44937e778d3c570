#include "db/ContractDao.h"

#include "core/TextRules.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto contractColumns = std::to_array<Column<Contract>>({
    column<&Contract::id>(u"id"),
    column<&Contract::projectId>(u"project_id"),
    column<&Contract::name>(u"name"),
    column<&Contract::code>(u"code"),
    column<&Contract::partyB>(u"party_b"),
    column<&Contract::amountFen>(u"amount_fen"),
    column<&Contract::signDate>(u"sign_date"),
    column<&Contract::signDateText>(u"sign_date"),
    column<&Contract::status>(u"status"),
    column<&Contract::note>(u"note"),
    column<&Contract::createdAt>(u"created_at"),
    column<&Contract::updatedAt>(u"updated_at"),
});

} // namespace

QList<Contract> ContractDao::listByProject(qint64 projectId)
{
    return readAll<Contract>(contractColumns,
        u"SELECT * FROM contracts WHERE project_id = :pid ORDER BY sign_date DESC, id DESC"_s,
        { { u":pid"_s, projectId } });
}

std::optional<Contract> ContractDao::findById(qint64 id)
{
    return readOne<Contract>(
        contractColumns, u"SELECT * FROM contracts WHERE id = :id"_s, { { u":id"_s, id } });
}

bool ContractDao::insert(Contract& contract)
{
    if (TextRules::isBlank(contract.code))
        contract.code = nextCode();
    return insertRow(
        u"INSERT INTO contracts (project_id, name, code, party_b, amount_fen, sign_date, status, "
        "note) VALUES (:project_id, :name, :code, :party_b, :amount_fen, :sign_date, :status, "
        ":note)"_s,
        bindingsOf(contract), contract.id);
}

bool ContractDao::update(const Contract& contract)
{
    return write(
        u"UPDATE contracts SET project_id = :project_id, name = :name, code = :code, party_b = "
        ":party_b, amount_fen = :amount_fen, sign_date = :sign_date, status = :status, note = :note "
        "WHERE id = :id"_s,
        bindingsOf(contract) << Binding { u":id"_s, contract.id });
}

bool ContractDao::remove(qint64 id)
{
    return write(u"DELETE FROM contracts WHERE id = :id"_s, { { u":id"_s, id } });
}

std::optional<QHash<qint64, int>> ContractDao::voucherCounts(qint64 projectId)
{
    QHash<qint64, int> counts;
    QSqlQuery query = newQuery();
    if (!run(query,
            u"SELECT l.target_id, COUNT(*) FROM contracts c JOIN entity_links l ON l.target_type = "
            "'contract' AND l.target_id = c.id AND l.source_type = 'voucher' WHERE c.project_id = "
            ":pid GROUP BY l.target_id"_s,
            { { u":pid"_s, projectId } }))
        return {};
    while (query.next())
        counts.insert(query.value(0).toLongLong(), query.value(1).toInt());
    if (!readToTheEnd(query))
        return {};
    return counts;
}

QString ContractDao::nextCode()
{
    return nextSerialCode(u"SELECT COALESCE(MAX(CAST(substr(code, -4) AS INTEGER)), 0) + 1 AS "
                          "next_seq FROM contracts WHERE code LIKE :pattern"_s,
        u"HT-%1-"_s.arg(QDate::currentDate().year()));
}

BaseDao::Bindings ContractDao::bindingsOf(const Contract& contract)
{
    return {
        { u":project_id"_s, contract.projectId },
        { u":name"_s, notNull(contract.name) },
        { u":code"_s, notNull(contract.code) },
        { u":party_b"_s, notNull(contract.partyB) },
        { u":amount_fen"_s, contract.amountFen },
        { u":sign_date"_s, dateOrNull(contract.signDate) },
        { u":status"_s, codeOf(contract.status) },
        { u":note"_s, nullIfEmpty(contract.note) },
    };
}

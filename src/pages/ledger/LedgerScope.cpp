#include "pages/ledger/LedgerScope.h"

#include <QVariant>

using namespace Qt::StringLiterals;

namespace {

// The fallback of an unknown code would show something else than what was asked for.
template <typename Enum> std::optional<Enum> valueOf(const QVariant& code)
{
    const QString text = code.toString();
    for (const auto& row : codeTable<Enum>) {
        if (row.code == text)
            return row.value;
    }
    return std::nullopt;
}

} // namespace

LedgerScope LedgerScope::of(const NavParams& params)
{
    LedgerScope scope;
    scope.risk = valueOf<RiskLevel>(params.value(u"risk"_s));
    scope.category = valueOf<Category>(params.value(u"category"_s));
    scope.range = { .from = params.value(u"dateFrom"_s).toDate(),
        .to = params.value(u"dateTo"_s).toDate() };
    scope.projectId = params.value(u"projectId"_s).toLongLong();
    const QVariantList ids = params.value(u"txIds"_s).toList();
    for (const QVariant& id : ids)
        scope.entryIds += id.toLongLong();
    scope.selectedId = params.value(u"txId"_s).toLongLong();
    scope.all = params.value(u"all"_s).toBool();
    return scope;
}

bool LedgerScope::restricts() const
{
    return risk || category || range != DateRange() || projectId > 0 || !entryIds.isEmpty();
}

QList<Transaction> LedgerScope::chosenOf(QList<Transaction> entries) const
{
    if (!entryIds.isEmpty())
        entries.removeIf([this](const Transaction& entry) { return !entryIds.contains(entry.id); });
    return entries;
}

#include "services/documents/FundSelection.h"

#include "core/TextRules.h"
#include "services/documents/DocumentTexts.h"
#include "services/OwnerFlows.h"

#include <QHash>
#include <QStringList>

#include <algorithm>
#include <iterator>
#include <tuple>

using namespace Qt::StringLiterals;

namespace FundSelections {

namespace {

constexpr qsizetype namedAtMost = 3;

QString namesOf(const QList<Transaction>& entries)
{
    QStringList names;
    for (const Transaction& entry : entries.first(std::min(entries.size(), namedAtMost)))
        names += u"「%1 %2」"_s.arg(TextRules::dateText(entry.transDate), entry.summary);
    const QString more = entries.size() > namedAtMost ? u"等"_s : QString();
    return names.join(u'、') + more;
}

QString numbersOf(const QList<qint64>& ids)
{
    QStringList numbers;
    for (const qint64 id : ids.first(std::min(ids.size(), namedAtMost)))
        numbers += u"#%1"_s.arg(id);
    const QString more = ids.size() > namedAtMost ? u"等"_s : QString();
    return numbers.join(u'、') + more;
}

} // namespace

FundSelection choose(const QList<qint64>& wanted, const QList<Transaction>& ledger)
{
    QHash<qint64, const Transaction*> byId;
    for (const Transaction& entry : ledger)
        byId.insert(entry.id, &entry);
    FundSelection selection;
    QSet<qint64> seen;
    for (const qint64 id : wanted) {
        if (seen.contains(id))
            continue;
        seen.insert(id);
        const Transaction* entry = byId.value(id);
        if (!entry) {
            selection.unknown += id;
            continue;
        }
        if (selection.ids.isEmpty())
            selection.direction = entry->direction;
        if (entry->direction == selection.direction)
            selection.ids += id;
        else
            selection.otherDirection += *entry;
    }
    return selection;
}

QString leftOutText(const FundSelection& selection)
{
    QStringList parts;
    const auto& others = selection.otherDirection;
    if (!others.isEmpty())
        parts += u"一份决定书只能包含同一方向的流水，已按第一笔选择「%1」；方向不同的 %2 笔未勾选："
                 "%3，请另行出具决定书。"_s.arg(DocumentTexts::directionLabel(selection.direction),
                     QString::number(others.size()), namesOf(others));
    if (!selection.unknown.isEmpty())
        parts += u"%1 笔流水已不存在，未勾选：%2。"_s.arg(
            QString::number(selection.unknown.size()), numbersOf(selection.unknown));
    return parts.join(QString());
}

QString foreignText(const QList<Transaction>& chosen)
{
    QList<Transaction> foreign = chosen;
    foreign.removeIf([](const Transaction& entry) {
        return OwnerFlows::mayConcernOwner(
            entry.category, entry.ownerAccountType, entry.counterpartyAccountType);
    });
    if (foreign.isEmpty())
        return {};
    return u"所选流水中有 %1 笔看起来不是公司与股东之间的往来（如%2）。决定书只应覆盖公私往来，请核对后再生成。"_s
        .arg(QString::number(foreign.size()), namesOf(foreign.first(1)));
}

QList<Transaction> inOrder(
    const QList<Transaction>& ledger, const QSet<qint64>& ticked, Direction direction)
{
    QList<Transaction> chosen;
    std::copy_if(
        ledger.begin(), ledger.end(), std::back_inserter(chosen), [&](const Transaction& entry) {
            return entry.direction == direction && ticked.contains(entry.id);
        });
    std::sort(chosen.begin(), chosen.end(), [](const Transaction& a, const Transaction& b) {
        return std::tuple(a.transDate, a.id) < std::tuple(b.transDate, b.id);
    });
    return chosen;
}

} // namespace FundSelections

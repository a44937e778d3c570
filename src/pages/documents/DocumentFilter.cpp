#include "pages/documents/DocumentFilter.h"

#include "core/TextRules.h"
#include "pages/documents/DocumentModel.h"
#include "services/documents/DocumentRules.h"

DocumentFilter::DocumentFilter(QObject* parent)
    : QSortFilterProxyModel(parent)
    , m_collator(QLocale(QLocale::Chinese, QLocale::China))
{
    m_collator.setNumericMode(true);
    setSortRole(DocumentModel::SortRole);
}

void DocumentFilter::setWanted(const Wanted& wanted)
{
    m_wanted = wanted;
    invalidateFilter();
}

bool DocumentFilter::filterAcceptsRow(int row, const QModelIndex&) const
{
    const auto& record = qobject_cast<const DocumentModel*>(sourceModel())->at(row).record;
    const auto contains
        = [this](const QString& text) { return TextRules::holds(text, m_wanted.keyword); };
    return (!m_wanted.kind || record.docType == *m_wanted.kind)
        && (m_wanted.year == 0 || DocumentRules::numberingYear(record) == m_wanted.year)
        && (contains(record.docNo) || contains(record.title) || contains(record.extraText));
}

bool DocumentFilter::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    const QVariant a = left.data(sortRole());
    const QVariant b = right.data(sortRole());
    if (left.column() == DocumentModel::Covered)
        return a.toLongLong() < b.toLongLong();
    return m_collator.compare(a.toString(), b.toString()) < 0;
}

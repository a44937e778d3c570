#include "pages/documents/DocumentModel.h"

#include "core/TextRules.h"
#include "services/documents/DocumentTexts.h"
#include "theme/Theme.h"
#include "widgets/ColumnHeads.h"

#include <QBrush>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<QStringView, DocumentModel::ColumnCount> headers { u"编号", u"标题", u"类型",
    u"日期", u"覆盖流水", u"文件" };

QString coveredText(const ArchivedDocument& document)
{
    if (document.record.docType != DocType::FundDecision)
        return u"—"_s;
    const QString count = QString::number(document.coveredIds.size());
    if (document.lostEntries == 0)
        return u"%1 笔"_s.arg(count);
    return u"%1 笔（已删 %2）"_s.arg(count, QString::number(document.lostEntries));
}

} // namespace

void DocumentModel::setDocuments(const QList<ArchivedDocument>& documents)
{
    beginResetModel();
    m_documents = documents;
    endResetModel();
}

int DocumentModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_documents.size());
}

int DocumentModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant DocumentModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const ArchivedDocument& document = at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return text(document, index.column());
    case Qt::ToolTipRole:
        return index.column() == Covered && !document.coveredIds.isEmpty()
            ? u"在资金台账中查看这些流水"_s
            : text(document, index.column());
    case Qt::ForegroundRole:
        return color(document, index.column());
    case SortRole:
        if (index.column() == Covered)
            return document.coveredIds.size();
        return text(document, index.column());
    default:
        return {};
    }
}

QString DocumentModel::text(const ArchivedDocument& document, int column) const
{
    const DocumentRecord& record = document.record;
    switch (column) {
    case Number:
        return record.docNo;
    case Title:
        return record.title;
    case Kind:
        return DocumentTexts::kindName(record.docType);
    case Date:
        return TextRules::dateText(record.docDate);
    case Covered:
        return coveredText(document);
    case File:
        return document.hasFile ? u"正常"_s : u"缺失"_s;
    default:
        return {};
    }
}

QVariant DocumentModel::color(const ArchivedDocument& document, int column) const
{
    const Theme& theme = Theme::instance();
    if (column == Covered && !document.coveredIds.isEmpty())
        return QBrush(theme.color(Token::Link));
    if (column == File)
        return QBrush(theme.color(document.hasFile ? Token::SuccessText : Token::DangerText));
    return {};
}

QVariant DocumentModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return ColumnHeads::data(headers, section, orientation, role);
}

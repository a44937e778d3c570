#include "dialogs/vouchers/VoucherQueueModel.h"

#include "services/FileRules.h"

#include <QDir>

#include <algorithm>

using namespace Qt::StringLiterals;

int VoucherQueueModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_files.size());
}

QVariant VoucherQueueModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const QueuedFile& file = m_files.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return file.fileName();
    case Qt::AccessibleTextRole:
        return u"%1 %2 %3"_s.arg(
            file.fileName(), labelOf(file.state), FileRules::formatFileSize(file.size));
    case Qt::ToolTipRole:
        return QDir::toNativeSeparators(file.path);
    default:
        return {};
    }
}

qsizetype VoucherQueueModel::validCount() const
{
    return std::count_if(
        m_files.begin(), m_files.end(), [](const QueuedFile& file) { return file.isValid(); });
}

bool VoucherQueueModel::contains(const QString& path) const
{
    return std::any_of(
        m_files.begin(), m_files.end(), [&](const QueuedFile& file) { return file.path == path; });
}

void VoucherQueueModel::append(const QueuedFile& file)
{
    beginInsertRows({}, rowCount(), rowCount());
    m_files += file;
    endInsertRows();
}

void VoucherQueueModel::removeRowsAt(QList<int> rows)
{
    std::sort(rows.begin(), rows.end(), std::greater<>());
    for (const int row : std::as_const(rows)) {
        beginRemoveRows({}, row, row);
        m_files.removeAt(row);
        endRemoveRows();
    }
}

void VoucherQueueModel::removePaths(const QStringList& paths)
{
    QList<int> rows;
    for (int row = 0; row < rowCount(); ++row) {
        if (paths.contains(m_files.at(row).path))
            rows += row;
    }
    removeRowsAt(rows);
}

#pragma once

#include "services/vouchers/VoucherQueue.h"

#include <QAbstractListModel>
#include <QList>
#include <QStringList>

/// The files that wait to be archived, in the order in which they were chosen.
class VoucherQueueModel final : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    const QList<QueuedFile>& files() const { return m_files; }
    qsizetype validCount() const;
    bool contains(const QString& path) const;

    void append(const QueuedFile& file);
    void removeRowsAt(QList<int> rows);
    void removePaths(const QStringList& paths);

private:
    QList<QueuedFile> m_files;
};

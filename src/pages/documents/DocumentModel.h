#pragma once

#include "db/DocumentRecord.h"

#include <QAbstractTableModel>

/// A stored document as the archive lists it.
struct ArchivedDocument {
    DocumentRecord record; // without its content
    QList<qint64> coveredIds; // ledger entries that are still there
    qsizetype lostEntries = 0; // that it covered and that are gone
    bool hasFile = false;
};

/// The stored documents.
class DocumentModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Number, Title, Kind, Date, Covered, File, ColumnCount };
    static constexpr int SortRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    void setDocuments(const QList<ArchivedDocument>& documents);
    const QList<ArchivedDocument>& documents() const { return m_documents; }
    const ArchivedDocument& at(int row) const { return m_documents.at(row); }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString text(const ArchivedDocument& document, int column) const;
    QVariant color(const ArchivedDocument& document, int column) const;

    QList<ArchivedDocument> m_documents;
};

#pragma once

#include <QAbstractTableModel>
#include <QList>
#include <QSet>

#include <vector>

/// Records with a box to tick in the first column. Ticks belong to the records: neither searching
/// nor sorting loses one. Derived models say what a record shows.
class PickerModel : public QAbstractTableModel {
    Q_OBJECT

public:
    static constexpr int tickColumn = 0;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    /// By the records' own values; a column of -1 gives the order of the store back.
    void sort(int column, Qt::SortOrder order) override;

    /// Shows only the records that contain the keyword, white space around it aside.
    void setKeyword(const QString& keyword);

    /// Ticks the records with these ids and no others.
    void setTicked(const QSet<qint64>& ids);
    void setRowsTicked(const QList<int>& rows, bool ticked);
    void tickAllShown();
    void untickAll();
    bool isTicked(int row) const;

    /// In the order of the table, those that the search hides included.
    QList<qint64> tickedIds() const;
    qsizetype tickedCount() const { return m_tickedCount; }
    qsizetype recordCount() const { return static_cast<qsizetype>(m_order.size()); }

signals:
    /// Other records are ticked, or others are shown.
    void changed();

protected:
    using QAbstractTableModel::QAbstractTableModel;

    /// To be called once the records are there.
    void setRecordCount(qsizetype count);

    virtual QStringList headers() const = 0;
    virtual qint64 idOf(qsizetype record) const = 0;
    /// Numbers sort as such, texts in the order of a Chinese dictionary.
    virtual QVariant sortValue(qsizetype record, int column) const = 0;
    virtual bool matches(qsizetype record, const QString& keyword) const = 0;
    /// What columns other than the first show.
    virtual QVariant cell(qsizetype record, int column, int role) const = 0;
    virtual Qt::Alignment alignment(int column) const;

    qsizetype recordAt(int row) const { return m_shown.at(static_cast<std::size_t>(row)); }

private:
    QVariant tickData(qsizetype record, int role) const;
    void setRecordTicked(qsizetype record, bool ticked);
    void sortByValues(std::vector<qsizetype>& records, int column, Qt::SortOrder order) const;
    void filter();
    void announceTicks();

    std::vector<qsizetype> m_order; // all records as they are sorted
    std::vector<qsizetype> m_shown; // those of them that match the keyword
    std::vector<bool> m_ticked; // by record
    qsizetype m_tickedCount = 0;
    QString m_keyword;
};

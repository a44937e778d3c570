#pragma once

#include "core/Codes.h"

#include <QCollator>
#include <QSortFilterProxyModel>

#include <optional>

/// Which documents the archive shows, and in what order: titles by pinyin.
class DocumentFilter final : public QSortFilterProxyModel {
    Q_OBJECT

public:
    struct Wanted {
        std::optional<DocType> kind;
        int year = 0; // 0: any
        QString keyword; // in number, title or supplementary text
    };

    explicit DocumentFilter(QObject* parent = nullptr);

    void setWanted(const Wanted& wanted);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    Wanted m_wanted;
    QCollator m_collator;
};

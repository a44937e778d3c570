#pragma once

#include <QList>
#include <QWidget>

class LinkedEntries;
class ProjectCombo;

/// What a voucher is linked to: a project at most, and any number of ledger entries.
class VoucherLinkFields final : public QWidget {
    Q_OBJECT

public:
    explicit VoucherLinkFields(QWidget* parent = nullptr);

    void show(qint64 projectId, const QList<qint64>& entryIds);
    qint64 projectId() const;
    QList<qint64> entryIds() const;

    /// Whether the links are others than those shown at first.
    bool isChanged() const;

private:
    ProjectCombo* m_project;
    LinkedEntries* m_entries;
    qint64 m_shownProjectId = 0;
    QList<qint64> m_shownEntryIds;
};

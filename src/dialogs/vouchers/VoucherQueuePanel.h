#pragma once

#include "services/vouchers/VoucherQueue.h"

#include <QList>
#include <QStringList>
#include <QWidget>

class QListView;
class QPushButton;
class QStackedWidget;
class VoucherQueueModel;

/// The queue of files with its buttons. Each file is read once when it joins.
class VoucherQueuePanel final : public QWidget {
    Q_OBJECT

public:
    explicit VoucherQueuePanel(QWidget* parent = nullptr);

    const QList<QueuedFile>& files() const;
    qsizetype validCount() const;

    /// Files that are in the queue already stay there once.
    void add(const QStringList& paths);
    void removePaths(const QStringList& paths);
    void focusChooser();

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void changed();

private:
    void buildLayout();
    QWidget* buildDropZone();
    void onChooseFiles();
    void removeSelected();
    void update();

    VoucherQueueModel* m_model;
    QPushButton* m_choose;
    QPushButton* m_remove;
    QStackedWidget* m_stack;
    QListView* m_list;
};

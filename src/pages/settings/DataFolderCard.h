#pragma once

#include "pages/settings/SettingsCard.h"

#include <QList>
#include <QTimer>

#include <memory>

class FolderSize;
class QFormLayout;

/// Where the data lie and how much room they take. The sizes are counted in small steps between
/// the other work of the window.
class DataFolderCard final : public SettingsCard {
    Q_OBJECT

public:
    explicit DataFolderCard(QWidget* parent = nullptr);
    ~DataFolderCard() override;

    void refresh() override;

private:
    struct Row {
        QString name;
        QStringList paths;
        QLabel* size;
    };
    void addRow(const QString& name, const QStringList& paths);
    void countOn();
    void showSize(const Row& row, bool complete);

    QLabel* m_path;
    QFormLayout* m_layout;
    QList<Row> m_rows;
    qsizetype m_current = 0;
    std::unique_ptr<FolderSize> m_counter;
    QTimer m_timer;
};

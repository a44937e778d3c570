#pragma once

#include <QComboBox>

/// The project that something belongs to, or none.
class ProjectCombo final : public QComboBox {
    Q_OBJECT

public:
    /// Offers every project, the ones at work first.
    explicit ProjectCombo(QWidget* parent = nullptr);

    /// 0: none.
    qint64 projectId() const;
    /// A project that is not offered is added as history, so that saving keeps it.
    void setProjectId(qint64 id);
};

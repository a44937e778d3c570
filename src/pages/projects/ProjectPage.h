#pragma once

#include "db/Project.h"
#include "pages/IPage.h"

#include <optional>

class EmptyState;
class ProjectDetail;
class ProjectListModel;
class QLineEdit;
class QListView;
class QScrollArea;
class QStackedWidget;

/// Projects and contracts: a list of the projects, and everything about the chosen one. Takes
/// "projectId", the project to choose.
class ProjectPage final : public IPage {
    Q_OBJECT

public:
    explicit ProjectPage(QWidget* parent = nullptr);

    void refresh() override;
    void applyNavParams(const NavParams& params) override;

public slots:
    void onSearchChanged(const QString& text);
    void onCurrentProjectChanged(int row);
    void onAddProject();
    void onEditProject();
    void onDeleteProject();
    void onViewInLedger();

private:
    QWidget* buildList();
    QWidget* buildDetail();
    /// Reads the list and makes the wanted project the current one where it is listed.
    void reloadList();
    /// Shows the current project, or that none is chosen.
    void showCurrent();
    void choose(qint64 projectId);

    qint64 m_wanted = 0; // the chosen project, also while a search hides it
    bool m_reloading = false;
    std::optional<Project> m_shown;
    QLineEdit* m_search = nullptr;
    ProjectListModel* m_model = nullptr;
    QListView* m_list = nullptr;
    QStackedWidget* m_stack = nullptr;
    EmptyState* m_nothing = nullptr;
    ProjectDetail* m_detail = nullptr;
    QScrollArea* m_detailScroll = nullptr;
};

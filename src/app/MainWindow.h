#pragma once

#include "pages/PageId.h"

#include <QMainWindow>

#include <functional>

class ElidedLabel;
class IPage;
class QButtonGroup;
class QFrame;
class QHBoxLayout;
class QLabel;
class QStackedWidget;

/// The frame around the pages: top bar, navigation, page header, page stack and status bar. It
/// switches pages and knows nothing of what a page does.
class MainWindow final : public QMainWindow {
    Q_OBJECT

public:
    using PageFactory = std::function<IPage*(PageId, QWidget*)>;

    explicit MainWindow(const PageFactory& createPage, QWidget* parent = nullptr);

    PageId currentPage() const;

    /// Reloads the current page, its header and the status bar.
    void refreshCurrent();

public slots:
    void onNavClicked(int id);
    void onPageNavigateRequested(PageId target, const NavParams& params);

private:
    QFrame* buildTopBar();
    QFrame* buildNavBar();
    QWidget* buildPageArea();
    QFrame* buildPageHeader();
    QFrame* buildStatusBar();
    void addPages(const PageFactory& createPage);

    void switchToPage(int id, const NavParams& params);
    void showHeaderActions(IPage* page);
    void refreshStatusBar();
    void applyTheme();

    bool m_switching = false;
    int m_pageWhenPressed = -1;
    QButtonGroup* m_navButtons = nullptr;
    QLabel* m_productTitle = nullptr;
    QLabel* m_stateDot = nullptr;
    QLabel* m_dataState = nullptr;
    QLabel* m_pageTitle = nullptr;
    QHBoxLayout* m_actionLayout = nullptr;
    QStackedWidget* m_pages = nullptr;
    ElidedLabel* m_dataPath = nullptr;
    QLabel* m_lastBackup = nullptr;
    QLabel* m_notice = nullptr;
};

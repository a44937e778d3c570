#include "app/MainWindow.h"

#include "core/AppPaths.h"
#include "db/ProfileDao.h"
#include "pages/IPage.h"
#include "theme/Logo.h"
#include "theme/Theme.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NavButton.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QCoreApplication>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QScopedValueRollback>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

QFrame* namedFrame(const QString& name, QWidget* parent)
{
    auto* frame = new QFrame(parent);
    frame->setObjectName(name);
    return frame;
}

QString smallLabelStyle(Token colour)
{
    return u"QLabel { background: transparent; border: none; font-size: 12px; color: %1; }"_s.arg(
        Theme::instance().hex(colour));
}

} // namespace

MainWindow::MainWindow(const PageFactory& createPage, QWidget* parent)
    : QMainWindow(parent)
{
    setObjectName(u"MainWindow"_s);
    setWindowTitle(u"Brixa V%1"_s.arg(QCoreApplication::applicationVersion()));
    setWindowIcon(Logo::icon());
    setMinimumSize(1180, 720);
    resize(1280, 800);

    auto* central = new QWidget(this);
    auto* rows = new QVBoxLayout(central);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(buildTopBar());
    auto* middle = new QHBoxLayout;
    middle->setSpacing(0);
    middle->addWidget(buildNavBar());
    middle->addWidget(buildPageArea(), 1);
    rows->addLayout(middle, 1);
    rows->addWidget(buildStatusBar());
    setCentralWidget(central);

    addPages(createPage);
    applyTheme();
    connect(&Theme::instance(), &Theme::changed, this, &MainWindow::applyTheme);
    switchToPage(static_cast<int>(PageId::Dashboard), {});
}

QFrame* MainWindow::buildTopBar()
{
    QFrame* bar = namedFrame(u"TopBar"_s, this);
    bar->setFixedHeight(52);
    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(20, 0, 20, 0);
    layout->setSpacing(12);

    auto* mark = new QLabel(bar);
    mark->setPixmap(Logo::pixmap(24, devicePixelRatioF()));
    m_productTitle = new QLabel(u"Brixa"_s, bar);
    m_stateDot = new QLabel(bar);
    m_stateDot->setTextFormat(Qt::RichText);
    m_dataState = new QLabel(u"数据状态：本地离线 "_s, bar);
    m_dataState->setTextFormat(Qt::PlainText);
    m_dataState->setAccessibleName(u"数据状态：本地离线"_s);
    layout->addWidget(mark);
    layout->addWidget(m_productTitle);
    layout->addStretch();
    auto* state = new QHBoxLayout;
    state->setSpacing(6);
    state->addWidget(m_stateDot);
    state->addWidget(m_dataState);
    layout->addLayout(state);
    return bar;
}

QFrame* MainWindow::buildNavBar()
{
    QFrame* bar = namedFrame(u"NavBar"_s, this);
    auto* layout = new QVBoxLayout(bar);
    layout->setContentsMargins(8, 12, 8, 12);
    layout->setSpacing(4);
    m_navButtons = new QButtonGroup(this);
    m_navButtons->setExclusive(true);
    for (int id = 0; id < pageCount; ++id) {
        const PageLabel label = pageLabel(static_cast<PageId>(id));
        auto* button = new NavButton(label.icon, label.text, bar);
        const QKeySequence shortcut(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + id));
        button->setShortcut(shortcut);
        button->setToolTip(
            u"%1（%2）"_s.arg(label.text, shortcut.toString(QKeySequence::NativeText)));
        m_navButtons->addButton(button, id);
        layout->addWidget(button);
    }
    layout->addStretch();
    // Assistive technology toggles an entry without clicking it. A click on another entry toggles
    // it too; one on the current entry only clicks.
    connect(m_navButtons, &QButtonGroup::idToggled, this, [this](int id, bool checked) {
        if (checked && id != m_pages->currentIndex())
            onNavClicked(id);
    });
    connect(m_navButtons, &QButtonGroup::idPressed, this,
        [this] { m_pageWhenPressed = m_pages->currentIndex(); });
    connect(m_navButtons, &QButtonGroup::idClicked, this, [this](int id) {
        if (id == m_pageWhenPressed)
            onNavClicked(id);
    });
    return bar;
}

QWidget* MainWindow::buildPageArea()
{
    auto* area = new QWidget(this);
    auto* layout = new QVBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    m_pages = new QStackedWidget(area);
    m_pages->setObjectName(u"PageStack"_s);
    layout->addWidget(buildPageHeader());
    layout->addWidget(m_pages, 1);
    return area;
}

QFrame* MainWindow::buildPageHeader()
{
    QFrame* header = namedFrame(u"PageHeader"_s, this);
    header->setFixedHeight(56);
    auto* layout = new QHBoxLayout(header);
    layout->setContentsMargins(24, 0, 24, 0);
    m_pageTitle = new QLabel(header);
    m_pageTitle->setObjectName(u"PageTitle"_s);
    m_pageTitle->setTextFormat(Qt::PlainText);
    m_actionLayout = new QHBoxLayout;
    m_actionLayout->setSpacing(8);
    layout->addWidget(m_pageTitle);
    layout->addStretch();
    layout->addLayout(m_actionLayout);
    return header;
}

QFrame* MainWindow::buildStatusBar()
{
    QFrame* bar = namedFrame(u"StatusBar"_s, this);
    bar->setFixedHeight(32);
    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(20, 0, 20, 0);
    layout->setSpacing(24);
    m_dataPath = new ElidedLabel(bar);
    m_lastBackup = new QLabel(bar);
    m_lastBackup->setTextFormat(Qt::PlainText);
    m_notice = new QLabel(u"免责声明 V1.0　｜　本地数据，离线保存"_s, bar);
    layout->addWidget(m_dataPath, 1);
    layout->addWidget(m_lastBackup);
    layout->addWidget(m_notice);
    refreshStatusBar();
    return bar;
}

void MainWindow::addPages(const PageFactory& createPage)
{
    for (int id = 0; id < pageCount; ++id) {
        IPage* page = createPage(static_cast<PageId>(id), m_pages);
        connect(page, &IPage::navigateRequested, this, &MainWindow::onPageNavigateRequested);
        connect(page, &IPage::statusChanged, this, &MainWindow::refreshStatusBar);
        m_pages->addWidget(page);
    }
}

PageId MainWindow::currentPage() const
{
    return static_cast<PageId>(m_pages->currentIndex());
}

void MainWindow::refreshCurrent()
{
    switchToPage(m_pages->currentIndex(), {});
    refreshStatusBar();
}

void MainWindow::onNavClicked(int id)
{
    switchToPage(id, {});
}

void MainWindow::onPageNavigateRequested(PageId target, const NavParams& params)
{
    switchToPage(static_cast<int>(target), params);
}

void MainWindow::switchToPage(int id, const NavParams& params)
{
    // A page that asks for another one while it is being refreshed would nest the switches.
    if (id < 0 || id >= pageCount || m_switching)
        return;
    const QScopedValueRollback switching(m_switching, true);

    m_pages->setCurrentIndex(id);
    QAbstractButton* button = m_navButtons->button(id);
    button->setChecked(true);
    if (const auto* focused = qobject_cast<QAbstractButton*>(focusWidget());
        focused && m_navButtons->buttons().contains(focused))
        button->setFocus();
    auto* page = qobject_cast<IPage*>(m_pages->currentWidget());
    m_pageTitle->setText(page->title());
    if (!params.isEmpty())
        page->applyNavParams(params);
    page->refresh();
    showHeaderActions(page);
}

void MainWindow::showHeaderActions(IPage* page)
{
    // A layout item that was taken out belongs to the taker.
    while (const std::unique_ptr<QLayoutItem> item { m_actionLayout->takeAt(0) }) {
        if (QWidget* old = item->widget()) {
            old->hide();
            old->deleteLater();
        }
    }
    if (QWidget* actions = page->headerActions()) {
        actions->setParent(m_pageTitle->parentWidget());
        m_actionLayout->addWidget(actions);
        actions->show();
    }
}

void MainWindow::refreshStatusBar()
{
    m_dataPath->setText(u"数据路径：%1"_s.arg(AppPaths::databasePath()));
    const std::optional<CompanyProfile> profile = ProfileDao().find();
    // What cannot be read is not taken for a backup that was never made.
    const QString lastBackup = profile ? profile->lastBackupAt : u"—"_s;
    m_lastBackup->setText(
        lastBackup.isEmpty() ? u"最近备份：未备份"_s : u"最近备份：%1"_s.arg(lastBackup));
}

void MainWindow::applyTheme()
{
    const Theme& theme = Theme::instance();
    setStyleSheet(u"QFrame#TopBar { border-bottom: 1px solid %1; }"
                  "QFrame#NavBar { background: %2; border-right: 1px solid %1; }"
                  "QFrame#PageHeader { border-bottom: 1px solid %1; }"
                  "QFrame#StatusBar { border-top: 1px solid %1; }"
                  "QStackedWidget#PageStack { background: %3; }"_s.arg(
                      theme.hex(Token::Border), theme.hex(Token::BgNav), theme.hex(Token::BgPage)));
    m_productTitle->setStyleSheet(
        u"QLabel { background: transparent; border: none; font-size: 16px; font-weight: bold; "
        "color: %1; }"_s.arg(theme.hex(Token::TextPrimary)));
    for (QLabel* label : { m_stateDot, m_dataState })
        label->setStyleSheet(smallLabelStyle(Token::TextSecondary));
    m_stateDot->setText(u"<span style=\"color: %1; font-weight: bold;\">●</span>"_s.arg(
        theme.hex(Token::StateOnline)));
    for (QLabel* label : { static_cast<QLabel*>(m_dataPath), m_lastBackup, m_notice })
        label->setStyleSheet(smallLabelStyle(Token::TextTertiary));
}

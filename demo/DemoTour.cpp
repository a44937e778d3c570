#include "DemoTour.h"

#include "app/MainWindow.h"
#include "core/AppPaths.h"
#include "db/DatabaseManager.h"
#include "db/DocumentDao.h"
#include "db/ProfileDao.h"
#include "db/TransactionDao.h"
#include "db/VoucherDao.h"
#include "DemoClock.h"
#include "Hands.h"
#include "pages/IPage.h"
#include "services/ProfileRules.h"
#include "services/vouchers/VoucherService.h"
#include "theme/Theme.h"

#include <QApplication>
#include <QLabel>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTextBrowser>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

constexpr int lookEveryMs = 20;
constexpr int failed = 1;

void say(const QString& line)
{
    QTextStream(stdout) << line << Qt::endl;
}

void sayList(const QString& heading, const QStringList& paths)
{
    say(u"%1 (%2):"_s.arg(heading, QString::number(paths.size())));
    for (const QString& path : paths)
        say(u"  "_s + path);
}

// The empty program is shown before anything is recorded.
QString emptyPictureOf(PageId page)
{
    static const QStringList names { u"dashboard"_s, u"ledger"_s, u"documents"_s, u"projects"_s,
        u"vouchers"_s, u"reports"_s };
    return u"empty-"_s + names.at(static_cast<int>(page));
}

// Where the keyboard was left depends on what was visited before.
void leaveFocus()
{
    if (QWidget* focused = QApplication::focusWidget())
        focused->clearFocus();
}

} // namespace

DemoTour::DemoTour(const QString& folder, DemoSize size)
    : m_folder(folder)
    , m_size(size)
    , m_pictures(folder + u"/pictures"_s)
    , m_receipts(folder + u"/originals"_s)
{
}

void DemoTour::begin()
{
    m_step = u"first start"_s;
    say(m_step);
    expectGates();
    connect(&m_watch, &QTimer::timeout, this, &DemoTour::lookForWindow);
    m_watch.start(lookEveryMs);
}

void DemoTour::expectGates()
{
    m_guide.expect(
        u"DisclaimerDialog"_s, [this](QDialog& dialog) { return passDisclaimer(dialog); });
    m_guide.expect(
        u"ProfileWizardDialog"_s, [this](QDialog& dialog) { return passWizard(dialog); });
}

void DemoTour::lookForWindow()
{
    if (QApplication::activeModalWidget())
        return;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* window = qobject_cast<MainWindow*>(widget);
        if (!window || !window->isVisible())
            continue;
        m_window = window;
        m_watch.stop();
        run();
        QApplication::quit();
        return;
    }
}

QList<DemoTour::Step> DemoTour::steps()
{
    QList<Step> all { { u"first start: profile and calendar"_s,
                          [this] { return checkFirstStart(); } },
        { u"empty pages"_s, [this] { return showEmptyPages(); } } };
    all += fillingSteps();
    // The light theme last: the data folder is left as a new owner would find it.
    for (const ThemeMode theme : { ThemeMode::Dark, ThemeMode::Light })
        all += visitingSteps(theme);
    all += { u"stored data"_s, [this] { return checkStoredData(); } };
    return all;
}

QList<DemoTour::Step> DemoTour::fillingSteps()
{
    return {
        { u"projects and contracts"_s, [this] { return m_company.store(); } },
        { u"ledger"_s,
            [this] {
                m_ledger.emplace(m_company, m_size);
                return m_ledger->store();
            } },
        { u"voucher files"_s, [this] { return fillArchive(); } },
        { u"statutory documents"_s, [this] { return m_documents.drawUp(*m_ledger); } },
        { u"levels set by hand"_s, [this] { return m_ledger->review(); } },
        { u"every risk level"_s, [] { return DemoLedger::checkRisks(); } },
        { u"CSV exports"_s, [this] { return m_documents.exportTo(m_folder + u"/csv"_s); } },
        { u"backup"_s, [this] { return backUp(); } },
    };
}

QList<DemoTour::Step> DemoTour::visitingSteps(ThemeMode theme)
{
    const QString mode = codeOf(theme);
    QList<Step> visits { { u"%1 theme"_s.arg(mode),
        [this, theme] { return chooseTheme(theme); } } };
    for (const TourStops::PageStop& stop : TourStops::pages())
        visits += { u"%1/%2"_s.arg(mode, stop.picture), [this, stop] { return visitPage(stop); } };
    for (const TourStops::DialogStop& stop : TourStops::dialogs())
        visits
            += { u"%1/%2"_s.arg(mode, stop.picture), [this, stop] { return visitDialog(stop); } };
    return visits;
}

void DemoTour::run()
{
    const QList<Step> all = steps();
    for (qsizetype i = 0; i < all.size() && !m_problem; ++i) {
        m_step = all.at(i).name;
        say(u"[%1/%2] %3"_s.arg(QString::number(i + 1), QString::number(all.size()), m_step));
        m_problem = all.at(i).act();
        if (const Problem atDialogs = m_guide.takeProblem(); !m_problem)
            m_problem = atDialogs;
        if (const QStringList warnings = m_warnings.take(); !m_problem && !warnings.isEmpty())
            m_problem = u"warnings: "_s + warnings.join(u" | ");
    }
    m_done = !m_problem;
}

int DemoTour::conclude(int programStatus)
{
    if (!m_done && !m_problem)
        m_problem = m_guide.takeProblem().value_or(u"the main window did not show"_s);
    if (!m_problem && programStatus != 0)
        m_problem = u"the program ended with status %1"_s.arg(programStatus);
    say(u"Folder: "_s + m_folder);
    sayList(u"Pictures"_s, m_pictures.files());
    sayList(u"PDF documents"_s, m_documents.pdfFiles());
    sayList(u"CSV files"_s, m_documents.csvFiles());
    if (!m_problem)
        return 0;
    QTextStream(stderr) << u"FAILED at step \"%1\": %2"_s.arg(m_step, *m_problem) << Qt::endl;
    return failed;
}

Problem DemoTour::passDisclaimer(QDialog& dialog)
{
    if (const Problem problem = m_pictures.takeInEveryTheme(dialog, u"start-disclaimer"_s))
        return problem;
    auto* text = dialog.findChild<QTextBrowser*>();
    text->verticalScrollBar()->setValue(text->verticalScrollBar()->maximum());
    if (const Problem problem = Hands::press(dialog, u"我已阅读并同意以上全部内容"_s))
        return problem;
    return Hands::press(dialog, u"同意并继续"_s);
}

Problem DemoTour::passWizard(QDialog& dialog)
{
    const CompanyProfile profile = DemoCompany::profile();
    // In the order of the profile's fields.
    static const QStringList fields { u"companyName"_s, u"creditCode"_s, u"shareholderName"_s,
        u"bankName"_s, u"bankAccount"_s, u"address"_s, u"phone"_s };
    for (qsizetype i = 0; i < fields.size(); ++i) {
        const auto text = ProfileRules::fieldRows.at(static_cast<std::size_t>(i)).text;
        if (const Problem problem = Hands::type(dialog, fields.at(i), profile.*text))
            return problem;
    }
    struct Page {
        QString picture;
        QString button; // that leaves it
    };
    for (const Page& page : { Page { u"start-wizard-welcome"_s, u"下一步"_s },
             Page { u"start-wizard-company"_s, u"下一步"_s },
             Page { u"start-wizard-account"_s, u"完成"_s } }) {
        if (const Problem problem = m_pictures.takeInEveryTheme(dialog, page.picture))
            return problem;
        if (const Problem problem = Hands::press(dialog, page.button))
            return problem;
    }
    return {};
}

Problem DemoTour::checkFirstStart()
{
    if (!DemoClock::isObeyed())
        return u"the calendar cannot be set on this system"_s;
    const CompanyProfile typed = DemoCompany::profile();
    const CompanyProfile stored = ProfileDao().load();
    for (const ProfileRules::FieldRow& row : ProfileRules::fieldRows) {
        if (stored.*row.text != typed.*row.text)
            return u"the profile holds \"%1\" in the place of \"%2\""_s.arg(
                stored.*row.text, typed.*row.text);
    }
    if (const QString remark = ProfileRules::creditCodeRemark(stored.creditCode); !remark.isEmpty())
        return remark;
    return {};
}

Problem DemoTour::showEmptyPages()
{
    for (int id = 0; id < pageCount; ++id) {
        const auto page = static_cast<PageId>(id);
        if (page == PageId::Settings)
            continue; // holds what the wizard stored, the theme of the picture apart
        if (const Problem problem = goTo(page, {}))
            return problem;
        leaveFocus();
        if (const Problem problem = m_pictures.takeInEveryTheme(*m_window, emptyPictureOf(page)))
            return problem;
    }
    return {};
}

Problem DemoTour::fillArchive()
{
    if (const Problem problem = m_receipts.archiveProjects(m_company))
        return problem;
    if (const Problem problem = m_receipts.archiveEntries(m_ledger->entries()))
        return problem;
    if (const Problem problem = m_receipts.archiveUnlinked(m_ledger->entries()))
        return problem;
    DemoClock::set(DemoClock::today(), 9);
    const int stored = VoucherDao().countAll();
    if (stored != m_receipts.archived())
        return u"%1 of %2 vouchers are in the archive"_s.arg(
            QString::number(stored), QString::number(m_receipts.archived()));
    return {};
}

Problem DemoTour::backUp()
{
    if (const Problem problem = m_documents.backUp())
        return problem;
    m_window->refreshCurrent();
    const QString expected = u"最近备份：%1"_s.arg(ProfileDao().load().lastBackupAt);
    for (const auto* label :
        m_window->findChild<QWidget*>(u"StatusBar"_s)->findChildren<QLabel*>()) {
        if (label->text() == expected)
            return {};
    }
    return u"the status bar does not tell of the backup"_s;
}

Problem DemoTour::chooseTheme(ThemeMode theme)
{
    if (const Problem problem = goTo(PageId::Settings, {}))
        return problem;
    if (const Problem problem = Hands::press(*m_window, labelOf(theme)))
        return problem;
    if (Theme::instance().mode() != theme || ProfileDao().load().themeMode != codeOf(theme))
        return u"the theme was not taken on and stored"_s;
    return {};
}

Problem DemoTour::goTo(PageId page, const NavParams& params)
{
    m_window->onPageNavigateRequested(page, params);
    const auto* stack = m_window->findChild<QStackedWidget*>(u"PageStack"_s);
    const auto* shown = qobject_cast<IPage*>(stack->currentWidget());
    if (stack->currentIndex() != static_cast<int>(page) || !shown)
        return u"page %1 did not show"_s.arg(static_cast<int>(page));
    if (m_window->findChild<QLabel*>(u"PageTitle"_s)->text() != shown->title())
        return u"the header does not name the page %1"_s.arg(shown->title());
    return {};
}

Problem DemoTour::visitPage(const TourStops::PageStop& stop)
{
    if (const Problem problem = goTo(stop.page, stop.params))
        return problem;
    auto* page = qobject_cast<IPage*>(
        m_window->findChild<QStackedWidget*>(u"PageStack"_s)->currentWidget());
    Hands::waitForPainting();
    if (stop.arrange) {
        if (const Problem problem = stop.arrange(*page))
            return problem;
    }
    leaveFocus();
    const Problem problem = m_pictures.take(*m_window, stop.picture);
    return problem || !stop.leave ? problem : stop.leave();
}

Problem DemoTour::visitDialog(const TourStops::DialogStop& stop)
{
    if (const Problem problem = goTo(stop.page, {}))
        return problem;
    for (const auto& passage : stop.through) {
        m_guide.expect(passage.objectName,
            [passage](QDialog& dialog) { return Hands::press(dialog, passage.button); });
    }
    m_guide.expect(stop.objectName, [this, stop](QDialog& dialog) -> Problem {
        Hands::waitForPainting();
        if (stop.arrange) {
            if (const Problem problem = stop.arrange(dialog))
                return problem;
        }
        return m_pictures.take(dialog, stop.picture);
    });
    return stop.open(*m_window);
}

Problem DemoTour::checkStoredData()
{
    // The visits open editors and questions, and save nothing.
    if (TransactionDao().search({}).size() != m_ledger->entries().size()
        || VoucherDao().countAll() != m_receipts.archived()
        || DocumentDao().listWithoutContent().size() != m_documents.pdfFiles().size())
        return u"the visits changed the records"_s;
    QString finding;
    if (!DatabaseManager::instance().integrityCheck(&finding))
        return u"the database is damaged: "_s + finding;
    VoucherDao vouchers;
    for (const Voucher& voucher : vouchers.search({})) {
        bool readable = false;
        const QString digest
            = VoucherService::computeSha256(AppPaths::toAbsolute(voucher.storedPath), &readable);
        if (!readable || digest != voucher.sha256)
            return u"the copy of \"%1\" does not have its digest"_s.arg(voucher.name);
    }
    m_window->onPageNavigateRequested(PageId::Dashboard, {});
    return {};
}

#include "app/MainWindow.h"
#include "app/PageFactory.h"
#include "core/AppPaths.h"
#include "db/ProfileDao.h"
#include "pages/IPage.h"
#include "support/DatabaseTestCase.h"
#include "theme/Theme.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

namespace {

// Writes down what the window asks of it, in order.
class RecordingPage final : public IPage {
public:
    RecordingPage(PageId id, QStringList& journal, QWidget* parent)
        : IPage(u"标题 %1"_s.arg(static_cast<int>(id)), parent)
        , m_id(static_cast<int>(id))
        , m_journal(journal)
    {
    }

    void refresh() override
    {
        m_journal += u"%1 refresh"_s.arg(m_id);
        if (askFor >= 0)
            emit navigateRequested(static_cast<PageId>(askFor), {});
    }

    void applyNavParams(const NavParams& params) override
    {
        m_journal += u"%1 params %2"_s.arg(QString::number(m_id), params.keys().join(u','));
    }

    QWidget* headerActions() override
    {
        m_journal += u"%1 actions"_s.arg(m_id);
        return hasActions ? new QPushButton(u"操作 %1"_s.arg(m_id)) : nullptr;
    }

    int askFor = -1;
    bool hasActions = true;

private:
    const int m_id;
    QStringList& m_journal;
};

// A window whose pages are all recorded.
struct Recorded {
    Recorded()
        : window([this](PageId id, QWidget* parent) {
            auto* page = new RecordingPage(id, journal, parent);
            pages.push_back(page);
            return page;
        })
    {
        journal.clear();
    }

    int current() const
    {
        return window.findChild<QStackedWidget*>(u"PageStack"_s)->currentIndex();
    }

    QString title() const { return window.findChild<QLabel*>(u"PageTitle"_s)->text(); }

    QStringList shownActions() const
    {
        QStringList texts;
        for (const auto* button : window.findChildren<QPushButton*>()) {
            if (button->text().startsWith(u"操作"_s) && !button->isHidden())
                texts += button->text();
        }
        return texts;
    }

    QStringList journal;
    QList<RecordingPage*> pages;
    MainWindow window;
};

QList<QAbstractButton*> navButtons(const QWidget& window)
{
    return window.findChildren<QAbstractButton*>(u"NavItem"_s);
}

} // namespace

class TestMainWindow final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void cleanup()
    {
        Theme::instance().apply(ThemeMode::Light);
        DatabaseTestCase::cleanup();
    }

    void everyPageIsReachedByButtonAndKey()
    {
        const QStringList labels { u"首页看板"_s, u"资金台账"_s, u"文书中心"_s, u"项目合同"_s,
            u"凭证归档"_s, u"统计报表"_s, u"系统设置"_s };
        Recorded recorded;
        recorded.window.show();
        QVERIFY(QTest::qWaitForWindowActive(&recorded.window));
        QCOMPARE(recorded.current(), 0);
        for (int id = 0; id < labels.size(); ++id) {
            QAbstractButton* button = navButtons(recorded.window).at(id);
            QCOMPARE(button->text(), labels.at(id));
            recorded.window.onNavClicked((id + 1) % pageCount);
            button->click();
            QCOMPARE(recorded.current(), id);
            QCOMPARE(recorded.title(), u"标题 %1"_s.arg(id));
            QVERIFY(button->isChecked());

            recorded.window.onNavClicked((id + 1) % pageCount);
            QVERIFY(!button->isChecked());
            QTest::keyClick(
                &recorded.window, static_cast<Qt::Key>(Qt::Key_1 + id), Qt::ControlModifier);
            QTRY_COMPARE(recorded.current(), id);
        }
    }

    void assistiveTechnologySwitchesPages()
    {
        Recorded recorded;
        QAccessibleInterface* entry
            = QAccessible::queryAccessibleInterface(navButtons(recorded.window).at(1));
        entry->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        QCOMPARE(recorded.current(), 1);
        const QStringList expected { u"1 refresh"_s, u"1 actions"_s };
        QCOMPARE(recorded.journal, expected);
        navButtons(recorded.window).at(2)->click();
        QCOMPARE(recorded.journal.count(u"2 refresh"_s), 1);
        navButtons(recorded.window).at(2)->click();
        QVERIFY2(
            recorded.journal.count(u"2 refresh"_s) == 2, "a click on the current entry refreshes");
    }

    void parametersArriveBeforeTheRefresh()
    {
        Recorded recorded;
        recorded.window.onPageNavigateRequested(
            PageId::Ledger, { { u"risk"_s, u"high"_s }, { u"txId"_s, 3 } });
        const QStringList withParams { u"1 params risk,txId"_s, u"1 refresh"_s, u"1 actions"_s };
        QCOMPARE(recorded.journal, withParams);

        recorded.journal.clear();
        emit recorded.pages.at(1)->navigateRequested(PageId::Vouchers, {});
        const QStringList without { u"4 refresh"_s, u"4 actions"_s };
        QCOMPARE(recorded.journal, without);
    }

    void unknownPagesAreIgnored()
    {
        Recorded recorded;
        recorded.window.onNavClicked(2);
        recorded.journal.clear();
        for (const int id : { 7, 1000, -1 })
            recorded.window.onPageNavigateRequested(
                static_cast<PageId>(id), { { u"risk"_s, u"low"_s } });
        QCOMPARE(recorded.current(), 2);
        QVERIFY(recorded.journal.isEmpty());
    }

    void aRequestDuringARefreshIsDropped()
    {
        Recorded recorded;
        recorded.pages.at(3)->askFor = 5;
        recorded.window.onNavClicked(3);
        QCOMPARE(recorded.current(), 3);
        const QStringList expected { u"3 refresh"_s, u"3 actions"_s };
        QCOMPARE(recorded.journal, expected);

        recorded.window.onNavClicked(5);
        QVERIFY2(recorded.current() == 5, "later requests are served again");
    }

    void headerActionsBelongToTheirPage()
    {
        Recorded recorded;
        recorded.window.show();
        recorded.window.onNavClicked(1);
        QCOMPARE(recorded.shownActions(), QStringList { u"操作 1"_s });
        recorded.pages.at(2)->hasActions = false;
        recorded.window.onNavClicked(2);
        QCOMPARE(recorded.shownActions(), QStringList());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        for (const auto* button : recorded.window.findChildren<QPushButton*>())
            QVERIFY2(!button->text().startsWith(u"操作"_s), "old actions are deleted");
    }

    void statusBarFollowsTheProfile()
    {
        const Recorded recorded;
        const auto texts = [&recorded] {
            QStringList all;
            for (const auto* label :
                recorded.window.findChild<QWidget*>(u"StatusBar"_s)->findChildren<QLabel*>())
                all += label->text();
            return all;
        };
        const QString path = u"数据路径：%1"_s.arg(AppPaths::databasePath());
        const QString notice = u"免责声明 V1.0　｜　本地数据，离线保存"_s;
        QCOMPARE(texts(), (QStringList { path, u"最近备份：未备份"_s, notice }));

        QVERIFY(ProfileDao().setLastBackupAt(QDateTime(QDate(2026, 3, 1), QTime(9, 30))));
        emit recorded.pages.at(6)->statusChanged();
        QCOMPARE(texts(), (QStringList { path, u"最近备份：2026-03-01 09:30:00"_s, notice }));
    }

    void theRealPagesStandInTheirPlaces()
    {
        MainWindow window(createPage);
        const QStringList titles { u"首页看板"_s, u"公私资金台账"_s, u"文书中心"_s,
            u"项目合同管理"_s, u"凭证归档库"_s, u"统计报表"_s, u"系统设置"_s };
        for (int id = 0; id < pageCount; ++id) {
            window.onNavClicked(id);
            QCOMPARE(window.findChild<QLabel*>(u"PageTitle"_s)->text(), titles.at(id));
        }
        QCOMPARE(createPage(static_cast<PageId>(7), nullptr), nullptr);
    }

    void themeReachesTheFrame()
    {
        const Recorded recorded;
        QVERIFY(recorded.window.styleSheet().contains(
            tokenColor(Token::BgNav, ThemeMode::Light).name()));
        Theme::instance().apply(ThemeMode::Dark);
        QVERIFY(recorded.window.styleSheet().contains(
            tokenColor(Token::BgNav, ThemeMode::Dark).name()));
        QVERIFY(!recorded.window.styleSheet().contains(u'%'));
    }
};

static const RegisteredTest<TestMainWindow> registered;

#include "TestMainWindow.moc"

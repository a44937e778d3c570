#include "db/ContractDao.h"
#include "db/ProjectDao.h"
#include "db/Stored.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/TestLedger.h"
#include "support/Warnings.h"

using namespace Qt::StringLiterals;
using Stored::idsOf;
using TestDatabase::row;
using TestDatabase::run;

namespace {

qint64 add(const QString& name, const QString& client = u"客户"_s, const QString& code = {})
{
    return Stored::add<ProjectDao>(Project { .name = name, .code = code, .clientName = client });
}

qint64 addContract(qint64 project, int day = 1, const QString& code = {})
{
    return Stored::add<ContractDao>(
        Contract { .projectId = project, .code = code, .signDate = QDate(2025, 1, day) });
}

// A code of this year, as the stores give it.
QString thisYears(const QString& pattern)
{
    return QString(pattern).replace(u"%1"_s, QString::number(QDate::currentDate().year()));
}

} // namespace

class TestProjectDao final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void aBudgetOfZeroIsNoUnsetBudget()
    {
        Project project { .budgetFen = 0 };
        QVERIFY(ProjectDao().insert(project));
        QCOMPARE(ProjectDao().findById(1)->budgetFen, qint64 { 0 });
    }

    void projectsComeByStatusThenLastChange()
    {
        for (const ProjectStatus status : { ProjectStatus::Archived, ProjectStatus::Completed,
                 ProjectStatus::Planning, ProjectStatus::Ongoing, ProjectStatus::Planning })
            QVERIFY(Stored::add<ProjectDao>(Project { .status = status }));
        // Past the trigger, which would set the time of the test.
        QCOMPARE(run({ u"DROP TRIGGER trg_projects_updated"_s,
                     u"UPDATE projects SET updated_at = '2025-01-01 00:00:00' WHERE id = 3"_s }),
            QString());
        QCOMPARE(idsOf(ProjectDao().list()), (QList<qint64> { 4, 5, 3, 2, 1 }));
    }

    void keywordsFindNameAndClient()
    {
        QVERIFY(add(u"网站"_s, u"丙"_s) && add(u"小程序"_s, u"丁"_s));
        QCOMPARE(ProjectDao().list(u""_s).size(), 2);
        QCOMPARE(idsOf(ProjectDao().list(u"网"_s)), QList<qint64> { 1 });
        QCOMPARE(idsOf(ProjectDao().list(u"丁"_s)), QList<qint64> { 2 });
        QVERIFY(ProjectDao().list(u"戊"_s).isEmpty());
    }

    void contractsComeSignedLastFirst()
    {
        QVERIFY(add(u"一"_s) && add(u"二"_s));
        QVERIFY(addContract(1, 5) && addContract(1, 9) && addContract(1, 5) && addContract(2));
        QCOMPARE(idsOf(ContractDao().listByProject(1)), (QList<qint64> { 2, 3, 1 }));
    }

    void codesContinueTheHighestOfTheYear_data()
    {
        addColumns<QStringList, QString>("codes", "next");
        addCase("none", QStringList(), u"%1-0001"_s);
        addCase("after the highest", QStringList { u"%1-0003"_s, u"%1-0010"_s }, u"%1-0011"_s);
        addCase("other years do not count", QStringList { u"1999-0077"_s }, u"%1-0001"_s);
        addCase("typed without digits", QStringList { u"%1-main"_s }, u"%1-0001"_s);
        addCase("typed with a minus", QStringList { u"%1--900"_s }, u"%1-0001"_s);
        addCase("the last of four digits", QStringList { u"%1-9999"_s }, u"%1-10000"_s);
    }

    void codesContinueTheHighestOfTheYear()
    {
        QFETCH(QStringList, codes);
        QFETCH(QString, next);
        QVERIFY(add(u"无关"_s, u"c"_s, u"x"_s));
        for (const QString& code : codes) {
            QVERIFY(add(u"n"_s, u"c"_s, thisYears(u"P-"_s + code)));
            QVERIFY(addContract(1, 1, thisYears(u"HT-"_s + code)));
        }
        QCOMPARE(ProjectDao().nextCode(), thisYears(u"P-"_s + next));
        QCOMPARE(ContractDao().nextCode(), thisYears(u"HT-"_s + next));
    }

    void blankCodesAreGivenWhenStored()
    {
        Project project { .name = u"n"_s, .code = u" 　"_s };
        QVERIFY(ProjectDao().insert(project));
        QCOMPARE(project.code, thisYears(u"P-%1-0001"_s));
        QVERIFY(addContract(project.id));
        QCOMPARE(row(u"SELECT p.code, c.code FROM projects p, contracts c"_s),
            thisYears(u"P-%1-0001|HT-%1-0001"_s));
        project.code.clear();
        QVERIFY(ProjectDao().update(project));
        QCOMPARE(row(u"SELECT code FROM projects"_s), QString());
    }

    void projectsWithEntriesAreKept()
    {
        const qint64 project = add(u"网站"_s);
        Transaction entry = TestLedger::entry(u"2025-01-01"_s, Category::Other, Direction::In);
        entry.projectId = project;
        QVERIFY(TestLedger::add(entry) && TestLedger::add(entry) && TestLedger::add(entry));
        ProjectDao dao;
        QCOMPARE(dao.countTransactions(project), qint64 { 3 });
        QVERIFY(!dao.remove(project));
        QCOMPARE(dao.lastError(), u"该项目下有 3 笔流水，请先在台账中改派或删除"_s);
        QVERIFY(dao.findById(project));
    }

    void projectsWhoseEntriesCannotBeCountedAreKept()
    {
        const qint64 project = add(u"网站"_s);
        QCOMPARE(
            run({ u"ALTER TABLE transactions RENAME COLUMN project_id TO hidden"_s }), QString());
        ProjectDao dao;
        expectWarnings(QStringList(2, u"SQL error: no such column: project_id"_s));
        QVERIFY(!dao.countTransactions(project));
        QVERIFY(!dao.remove(project));
        QVERIFY(dao.lastError().startsWith(u"no such column"_s));
        QVERIFY(dao.findById(project));
    }
};

static const RegisteredTest<TestProjectDao> registered;

#include "TestProjectDao.moc"

#include "db/TestProjectDao.h"

#include "db/ContractDao.h"
#include "db/ProjectDao.h"
#include "support/TestDatabase.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;
using TestDatabase::row;
using TestDatabase::run;

namespace {

Project distinctProject()
{
    return { .name = u"网站"_s,
        .code = u"自编-7"_s,
        .clientName = u"乙公司"_s,
        .status = ProjectStatus::Completed,
        .startDate = QDate(2025, 1, 2),
        .endDate = QDate(2025, 3, 4),
        .budgetFen = 6'000'000'000,
        .manager = u"王 "_s,
        .note = u" 备注"_s };
}

Contract distinctContract(qint64 project)
{
    return { .projectId = project,
        .name = u"合同"_s,
        .code = u"自编-8"_s,
        .partyB = u"丙公司"_s,
        .amountFen = 7'000'000'000,
        .signDate = QDate(2025, 5, 6),
        .status = ContractStatus::Terminated,
        .note = u"条款 "_s };
}

qint64 add(const QString& name, const QString& client = u"客户"_s)
{
    Project project { .name = name, .clientName = client };
    return ProjectDao().insert(project) ? project.id : 0;
}

QStringList namesOf(const QList<Project>& projects)
{
    QStringList names;
    for (const Project& project : projects)
        names += project.name;
    return names;
}

// A code of this year, as the stores give it.
QString thisYears(const QString& pattern)
{
    return QString(pattern).replace(u"%1"_s, QString::number(QDate::currentDate().year()));
}

} // namespace

void TestProjectDao::everyProjectFieldIsStoredAndUpdated()
{
    const QString columns = u"SELECT name, code, client_name, status, start_date, end_date, "
                            "budget_fen, manager, note FROM projects WHERE id = 2"_s;
    const QString expected
        = u"网站|自编-7|乙公司|completed|2025-01-02|2025-03-04|6000000000|王 | 备注"_s;
    QVERIFY(add(u"另一个"_s));
    Project project = distinctProject();
    QVERIFY(ProjectDao().insert(project));
    QCOMPARE(project.id, qint64 { 2 });
    QCOMPARE(row(columns), expected);

    const auto stored = ProjectDao().findById(2);
    QVERIFY(stored);
    QCOMPARE(stored->id, qint64 { 2 });
    QCOMPARE(stored->name, project.name);
    QCOMPARE(stored->code, project.code);
    QCOMPARE(stored->clientName, project.clientName);
    QCOMPARE(stored->status, project.status);
    QCOMPARE(stored->startDate, project.startDate);
    QCOMPARE(stored->endDate, project.endDate);
    QCOMPARE(stored->budgetFen, project.budgetFen);
    QCOMPARE(stored->manager, project.manager);
    QCOMPARE(stored->note, project.note);
    QCOMPARE(stored->createdAt + u'|' + stored->updatedAt,
        row(u"SELECT created_at, updated_at FROM projects WHERE id = 2"_s));

    Project blank { .id = 2, .code = u"x"_s };
    QVERIFY(ProjectDao().update(blank));
    QCOMPARE(row(columns), u"|x||planning|∅|∅|∅|∅|∅"_s);
    QVERIFY(ProjectDao().update(*stored));
    QCOMPARE(row(columns), expected);
    QCOMPARE(ProjectDao().findById(1)->name, u"另一个"_s);
    QVERIFY(!ProjectDao().findById(3));
}

void TestProjectDao::unsetProjectPartsAreStoredAsNull()
{
    Project project { .name = u"n"_s, .clientName = u"c"_s, .manager = u" "_s, .note = u"　"_s };
    QVERIFY(ProjectDao().insert(project));
    QCOMPARE(row(u"SELECT start_date, end_date, budget_fen, manager, note FROM projects"_s),
        u"∅|∅|∅|∅|∅"_s);
    const auto stored = ProjectDao().findById(project.id);
    QVERIFY(!stored->budgetFen && !stored->startDate.isValid());
    project.budgetFen = 0;
    QVERIFY(ProjectDao().update(project));
    QCOMPARE(ProjectDao().findById(project.id)->budgetFen, qint64 { 0 });
}

void TestProjectDao::projectsComeByStatusThenLastChange()
{
    for (const ProjectStatus status : { ProjectStatus::Archived, ProjectStatus::Completed,
             ProjectStatus::Planning, ProjectStatus::Ongoing, ProjectStatus::Planning }) {
        Project project { .name = codeOf(status), .clientName = u"c"_s, .status = status };
        QVERIFY(ProjectDao().insert(project));
    }
    // Past the trigger, which would set the time of the test.
    QCOMPARE(run({ u"DROP TRIGGER trg_projects_updated"_s,
                 u"UPDATE projects SET name = 'older', updated_at = '2025-01-01 00:00:00' WHERE id "
                 "= 3"_s }),
        QString());
    QCOMPARE(namesOf(ProjectDao().list()),
        (QStringList { u"ongoing"_s, u"planning"_s, u"older"_s, u"completed"_s, u"archived"_s }));
}

void TestProjectDao::keywordsFindNameAndClient_data()
{
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("none") << QString() << QStringList { u"小程序"_s, u"网站"_s };
    QTest::newRow("empty") << u""_s << QStringList { u"小程序"_s, u"网站"_s };
    QTest::newRow("name") << u"网"_s << QStringList { u"网站"_s };
    QTest::newRow("client") << u"丁"_s << QStringList { u"小程序"_s };
    QTest::newRow("neither") << u"戊"_s << QStringList();
}

void TestProjectDao::keywordsFindNameAndClient()
{
    QFETCH(QString, keyword);
    QVERIFY(add(u"网站"_s, u"丙"_s) && add(u"小程序"_s, u"丁"_s));
    QStringList names = namesOf(ProjectDao().list(keyword));
    names.sort();
    QTEST(names, "names");
}

void TestProjectDao::everyContractFieldIsStoredAndUpdated()
{
    const QString columns = u"SELECT project_id, name, code, party_b, amount_fen, sign_date, "
                            "status, note FROM contracts"_s;
    const QString expected = u"2|合同|自编-8|丙公司|7000000000|2025-05-06|terminated|条款 "_s;
    QVERIFY(add(u"一"_s) && add(u"二"_s));
    Contract contract = distinctContract(2);
    QVERIFY(ContractDao().insert(contract));
    QCOMPARE(row(columns), expected);

    const auto stored = ContractDao().findById(contract.id);
    QVERIFY(stored);
    QCOMPARE(stored->id, qint64 { 1 });
    QCOMPARE(stored->projectId, contract.projectId);
    QCOMPARE(stored->name, contract.name);
    QCOMPARE(stored->code, contract.code);
    QCOMPARE(stored->partyB, contract.partyB);
    QCOMPARE(stored->amountFen, contract.amountFen);
    QCOMPARE(stored->signDate, contract.signDate);
    QCOMPARE(stored->status, contract.status);
    QCOMPARE(stored->note, contract.note);
    QCOMPARE(stored->createdAt + u'|' + stored->updatedAt,
        row(u"SELECT created_at, updated_at FROM contracts"_s));

    QVERIFY(ContractDao().update({ .id = 1,
        .projectId = 1,
        .code = u"x"_s,
        .signDate = QDate(2020, 1, 1),
        .note = u" "_s }));
    QCOMPARE(row(columns), u"1||x||0|2020-01-01|active|∅"_s);
    QVERIFY(ContractDao().update(*stored));
    QCOMPARE(row(columns), expected);
    QVERIFY(ContractDao().remove(1));
    QVERIFY(!ContractDao().findById(1));
}

void TestProjectDao::contractsComeSignedLastFirst()
{
    QVERIFY(add(u"一"_s) && add(u"二"_s));
    for (const int day : { 5, 9, 5 }) {
        Contract contract { .projectId = 1, .signDate = QDate(2025, 1, day) };
        QVERIFY(ContractDao().insert(contract));
    }
    Contract other { .projectId = 2, .signDate = QDate(2025, 1, 1) };
    QVERIFY(ContractDao().insert(other));
    QList<qint64> ids;
    for (const Contract& contract : ContractDao().listByProject(1))
        ids += contract.id;
    QCOMPARE(ids, (QList<qint64> { 2, 3, 1 }));
}

void TestProjectDao::codesContinueTheHighestOfTheYear_data()
{
    QTest::addColumn<QStringList>("codes");
    QTest::addColumn<QString>("next");
    QTest::newRow("none") << QStringList() << u"%1-0001"_s;
    QTest::newRow("after the highest")
        << QStringList { u"%1-0003"_s, u"%1-0010"_s } << u"%1-0011"_s;
    QTest::newRow("other years do not count") << QStringList { u"1999-0077"_s } << u"%1-0001"_s;
    QTest::newRow("typed without digits") << QStringList { u"%1-main"_s } << u"%1-0001"_s;
    QTest::newRow("typed with a minus") << QStringList { u"%1--900"_s } << u"%1-0001"_s;
    QTest::newRow("the last of four digits") << QStringList { u"%1-9999"_s } << u"%1-10000"_s;
}

void TestProjectDao::codesContinueTheHighestOfTheYear()
{
    QFETCH(QStringList, codes);
    QFETCH(QString, next);
    const qint64 project = add(u"无关"_s);
    QCOMPARE(run({ u"UPDATE projects SET code = 'x'"_s }), QString());
    for (const QString& code : codes) {
        Project stored { .code = thisYears(u"P-"_s + code) };
        QVERIFY(ProjectDao().insert(stored));
        Contract contract {
            .projectId = project, .code = thisYears(u"HT-"_s + code), .signDate = QDate(2025, 1, 1)
        };
        QVERIFY(ContractDao().insert(contract));
    }
    QCOMPARE(ProjectDao().nextCode(), thisYears(u"P-"_s + next));
    QCOMPARE(ContractDao().nextCode(), thisYears(u"HT-"_s + next));
}

void TestProjectDao::blankCodesAreGivenWhenStored()
{
    Project project { .name = u"n"_s, .code = u" 　"_s };
    QVERIFY(ProjectDao().insert(project));
    QCOMPARE(project.code, thisYears(u"P-%1-0001"_s));
    Contract contract { .projectId = project.id, .signDate = QDate(2025, 1, 1) };
    QVERIFY(ContractDao().insert(contract));
    QCOMPARE(contract.code, thisYears(u"HT-%1-0001"_s));
    QCOMPARE(row(u"SELECT p.code, c.code FROM projects p, contracts c"_s),
        project.code + u'|' + contract.code);

    project.code.clear();
    QVERIFY(ProjectDao().update(project));
    QCOMPARE(row(u"SELECT code FROM projects"_s), QString());
}

void TestProjectDao::aTakenCodeIsRefused()
{
    Project project = distinctProject();
    QVERIFY(ProjectDao().insert(project));
    ProjectDao dao;
    QTest::ignoreMessage(
        QtWarningMsg, QRegularExpression(u"UNIQUE constraint failed: projects.code"_s));
    QVERIFY(!dao.insert(project));
    QVERIFY(dao.lastError().contains(u"UNIQUE constraint failed"_s));
}

void TestProjectDao::projectsWithEntriesAreKept()
{
    const qint64 project = add(u"网站"_s);
    const QString entry = u"INSERT INTO transactions (trans_date, summary, direction, amount_fen, "
                          "owner_account_type, counterparty_name, category, project_id) VALUES "
                          "('2025-01-01', 's', 'in', 1, 'company', 'c', 'other', 1)"_s;
    QCOMPARE(run({ entry, entry, entry }), QString());
    ProjectDao dao;
    QCOMPARE(dao.countTransactions(project), qint64 { 3 });
    QVERIFY(!dao.remove(project));
    QCOMPARE(dao.lastError(), u"该项目下有 3 笔流水，请先在台账中改派或删除"_s);
    QVERIFY(dao.findById(project));
}

void TestProjectDao::projectsWhoseEntriesCannotBeCountedAreKept()
{
    const qint64 project = add(u"网站"_s);
    QCOMPARE(run({ u"ALTER TABLE transactions RENAME COLUMN project_id TO hidden"_s }), QString());
    ProjectDao dao;
    const QRegularExpression line(u"^SQL error: no such column: project_id"_s);
    QTest::ignoreMessage(QtWarningMsg, line);
    QVERIFY(!dao.countTransactions(project));
    QTest::ignoreMessage(QtWarningMsg, line);
    QVERIFY(!dao.remove(project));
    QVERIFY(dao.lastError().startsWith(u"no such column"_s));
    QVERIFY(dao.findById(project));
}

void TestProjectDao::projectsWithoutEntriesGoWithTheirContracts()
{
    const qint64 project = add(u"网站"_s);
    Contract contract { .projectId = project, .signDate = QDate(2025, 1, 1) };
    QVERIFY(ContractDao().insert(contract));
    QVERIFY(ProjectDao().remove(project));
    QVERIFY(!ProjectDao().findById(project));
    QVERIFY(!ContractDao().findById(contract.id));
}

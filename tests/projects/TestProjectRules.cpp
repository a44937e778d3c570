#include "services/projects/ProjectRules.h"
#include "services/projects/ProjectTexts.h"
#include "support/TestCase.h"

using namespace Qt::StringLiterals;

namespace {

template <typename Record> QString told(const Record& record)
{
    const auto problem = ProjectRules::firstProblem(record);
    return problem ? problem->title + u'|' + problem->text : QString();
}

} // namespace

class TestProjectRules final : public TestCase {
    Q_OBJECT

private slots:
    void projectsAreChecked_data()
    {
        addColumns<QString, QString, QString, QString, int, QString>(
            "name", "client", "start", "end", "noteLength", "problem");
        const QString incomplete = u"信息不完整|"_s;
        const QString wrongDate = u"日期有误|"_s;
        addCase("complete, without dates", u"甲"_s, u"乙"_s, u""_s, u""_s, 500, u""_s);
        addCase("blank name before all", u" 　"_s, u""_s, u""_s, u""_s, 501,
            incomplete + u"请填写项目名称。"_s);
        addCase("blank client", u"甲"_s, u" "_s, u"x"_s, u""_s, 501,
            incomplete + u"请填写客户名称。"_s);
        addCase("equal dates", u"甲"_s, u"乙"_s, u"2026-01-02"_s, u"2026-01-02"_s, 0, u""_s);
        addCase("end before start", u"甲"_s, u"乙"_s, u"2026-01-02"_s, u"2026-01-01"_s, 501,
            wrongDate + u"结束日期不能早于开始日期。"_s);
        addCase("end alone", u"甲"_s, u"乙"_s, u""_s, u"2026-01-01"_s, 0, u""_s);
        addCase("start that is no day", u"甲"_s, u"乙"_s, u"2026-13-01"_s, u""_s, 0,
            wrongDate + u"开始日期无法识别，请按 2025-02-03 的格式填写，或留空。"_s);
        addCase("end that is no day", u"甲"_s, u"乙"_s, u""_s, u"明年"_s, 0,
            wrongDate + u"结束日期无法识别，请按 2025-02-03 的格式填写，或留空。"_s);
        addCase(
            "note of 501", u"甲"_s, u"乙"_s, u""_s, u""_s, 501, u"备注过长|备注不超过 500 字。"_s);
    }

    void projectsAreChecked()
    {
        QFETCH(QString, name);
        QFETCH(QString, client);
        QFETCH(QString, start);
        QFETCH(QString, end);
        QFETCH(int, noteLength);
        Project project;
        project.name = name;
        project.clientName = client;
        project.startDate = QDate::fromString(start, Qt::ISODate);
        project.startDateText = start;
        project.endDate = QDate::fromString(end, Qt::ISODate);
        project.endDateText = end;
        project.note = u"😀"_s.repeated(noteLength);
        QTEST(told(project), "problem");
    }

    void directionMarksAreNotStored()
    {
        Project project;
        for (QString* text :
            { &project.code, &project.name, &project.clientName, &project.manager, &project.note })
            *text = u"\u202e甲"_s;
        project = ProjectRules::normalized(project);
        QCOMPARE(project.code + project.name + project.clientName + project.manager + project.note,
            u"甲甲甲甲甲"_s);
        Contract contract;
        for (QString* text : { &contract.code, &contract.name, &contract.partyB, &contract.note })
            *text = u"乙\u2067"_s;
        contract = ProjectRules::normalized(contract);
        QCOMPARE(contract.code + contract.name + contract.partyB + contract.note, u"乙乙乙乙"_s);
    }

    void contractsAreChecked_data()
    {
        addColumns<QString, QString, QDate, int, QString>(
            "name", "party", "date", "noteLength", "problem");
        const QDate day(2026, 1, 2);
        addCase("complete", u"甲"_s, u"乙"_s, day, 500, u""_s);
        addCase("blank name", u" "_s, u""_s, QDate(), 501, u"信息不完整|请填写合同名称。"_s);
        addCase("blank party", u"甲"_s, u"　"_s, QDate(), 0, u"信息不完整|请填写对方当事人。"_s);
        addCase("no date", u"甲"_s, u"乙"_s, QDate(), 501,
            u"日期有误|请按 2025-02-03 的格式填写签订日期。"_s);
        addCase("note of 501", u"甲"_s, u"乙"_s, day, 501, u"备注过长|备注不超过 500 字。"_s);
    }

    void contractsAreChecked()
    {
        QFETCH(QString, name);
        QFETCH(QString, party);
        QFETCH(QDate, date);
        QFETCH(int, noteLength);
        Contract contract;
        contract.name = name;
        contract.partyB = party;
        contract.signDate = date;
        contract.note = u"注"_s.repeated(noteLength);
        QTEST(told(contract), "problem");
    }

    void figuresAreTold()
    {
        Project project;
        project.code = u"P-2026-0001"_s;
        project.status = ProjectStatus::Ongoing;
        QCOMPARE(ProjectTexts::headline(project), u"P-2026-0001 · 进行中 · 预算 未设置"_s);
        project.budgetFen = 12'000'050;
        QCOMPARE(ProjectTexts::headline(project), u"P-2026-0001 · 进行中 · 预算 120,000.50 元"_s);
        project.startDate = QDate(2026, 1, 5);
        project.endDateText = u"2026-02-30"_s;
        QCOMPARE(ProjectTexts::period(project), u"2026-01-05 至 2026-02-30（日期有误）"_s);
        QCOMPARE(ProjectTexts::amount(Contract()), u"未约定"_s);
        QCOMPARE(ProjectTexts::totals({ 300'000, 100'050, 3 }),
            u"共 3 笔 · 收入合计 3,000.00 元 / 支出合计 1,000.50 元 / 净额 1,999.50 元"_s);
    }
};

static const RegisteredTest<TestProjectRules> registered;

#include "TestProjectRules.moc"

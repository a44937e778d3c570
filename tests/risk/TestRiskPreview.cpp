#include "services/risk/RiskPreview.h"
#include "support/TestCase.h"

using namespace Qt::StringLiterals;
using RiskRules::RiskResult;

Q_DECLARE_METATYPE(RiskResult)

namespace {

const QString frequencyHint
    = u"\n频繁互转规则（近 30 天窗口内达 3 笔且无往来决定书）将在保存后完成完整判定。"_s;
const QString incompleteHint = u"\n（请先完善必填项，预演结果随填写更新）"_s;
const QString nothingFound = u"当前关键字段未触发即时风险规则（R1/R3）。"_s;

} // namespace

class TestRiskPreview final : public TestCase {
    Q_OBJECT

private slots:
    void theLevelChoosesBannerAndHeading_data()
    {
        addColumns<RiskResult, NoticeLevel, QString>("result", "level", "text");
        addCase("high", RiskResult { RiskLevel::High, { u"甲 %1"_s, u"乙"_s } },
            NoticeLevel::Danger, u"保存后将标记为【高风险】：\n甲 %1\n乙"_s);
        addCase("low", RiskResult { RiskLevel::Low, { u"丙"_s } }, NoticeLevel::Warning,
            u"保存后将标记为【预警】：\n丙"_s);
        addCase("normal", RiskResult(), NoticeLevel::Info, nothingFound);
    }

    void theLevelChoosesBannerAndHeading()
    {
        QFETCH(RiskResult, result);
        const RiskPreview preview = riskPreview(result, Category::Other, true);
        QTEST(preview.level, "level");
        QTEST(preview.text, "text");
        const RiskPreview incomplete = riskPreview(result, Category::Other, false);
        QCOMPARE(incomplete.level, preview.level);
        QCOMPARE(incomplete.text, preview.text + incompleteHint);
    }

    void transfersAreToldOfTheFullEvaluation()
    {
        const QStringList told { u"expense_reimburse"_s, u"shareholder_in"_s,
            u"shareholder_out"_s };
        for (const Category category : allValues<Category>())
            QCOMPARE(riskPreview({}, category, true).text,
                nothingFound + (told.contains(codeOf(category)) ? frequencyHint : u""_s));
    }

    void remarksFollowEachOther()
    {
        const RiskResult low { RiskLevel::Low, { u"丙"_s } };
        QCOMPARE(riskPreview(low, Category::ShareholderOut, false).text,
            u"保存后将标记为【预警】：\n丙"_s + frequencyHint + incompleteHint);
    }
};

static const RegisteredTest<TestRiskPreview> registered;

#include "TestRiskPreview.moc"

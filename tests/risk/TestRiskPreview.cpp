#include "services/risk/RiskPreview.h"
#include "support/TestCase.h"

using namespace Qt::StringLiterals;
using RiskRules::RiskResult;

namespace {

const QString frequencyHint
    = u"\n频繁互转规则（近 30 天窗口内达 3 笔且无往来决定书）将在保存后完成完整判定。"_s;
const QString incompleteHint = u"\n（请先完善必填项，预演结果随填写更新）"_s;
const QString nothingFound = u"当前关键字段未触发即时风险规则（R1/R3）。"_s;

} // namespace

class TestRiskPreview final : public TestCase {
    Q_OBJECT

private slots:
    void theLevelChoosesBannerAndHeading()
    {
        const auto previewOf
            = [](const RiskResult& result) { return riskPreview(result, Category::Other, true); };
        const RiskPreview high = previewOf({ RiskLevel::High, { u"甲 %1"_s, u"乙"_s } });
        QCOMPARE(high.level, NoticeLevel::Danger);
        QCOMPARE(high.text, u"保存后将标记为【高风险】：\n甲 %1\n乙"_s);
        const RiskPreview low = previewOf({ RiskLevel::Low, { u"丙"_s } });
        QCOMPARE(low.level, NoticeLevel::Warning);
        QCOMPARE(low.text, u"保存后将标记为【预警】：\n丙"_s);
        QCOMPARE(previewOf({}).level, NoticeLevel::Info);
        QCOMPARE(previewOf({}).text, nothingFound);
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

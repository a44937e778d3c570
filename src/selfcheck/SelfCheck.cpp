#include "selfcheck/SelfCheck.h"

#include "db/DatabaseManager.h"
#include "db/DbTransaction.h"
#include "selfcheck/Findings.h"
#include "selfcheck/Suites.h"
#include "services/SelfCheckState.h"

#include <QElapsedTimer>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QList<SelfCheck::Suite>& dataSuites()
{
    static const QList<SelfCheck::Suite> suites {
        { u"数据库结构"_s, Suites::schema },
        { u"公司档案"_s, Suites::profile, true },
        { u"金额计算"_s, Suites::money },
        { u"代码表"_s, Suites::codes },
        { u"数据读写"_s, Suites::stores, true },
        { u"风险规则"_s, Suites::riskRules, true },
        { u"关联关系"_s, Suites::links, true },
        { u"自动编号"_s, Suites::numbering, true },
        { u"文书内容"_s, Suites::documentTexts },
        { u"凭证文件"_s, Suites::vouchers },
        { u"CSV 导出"_s, Suites::csv },
    };
    return suites;
}

void checkAndTakeBack(const SelfCheck::Suite& suite, Findings& findings)
{
    if (DatabaseManager::instance().isReadOnly()) {
        findings.remark(u"数据库为只读，未检查写入"_s);
        return;
    }
    // Its destructor rolls back whatever the suite has left.
    const DbTransaction transaction;
    if (findings.expect(
            transaction.isOpen(), u"数据库事务无法开启：%1"_s.arg(transaction.lastError())))
        suite.check(findings);
}

SelfCheckResult resultOf(const SelfCheck::Suite& suite)
{
    QElapsedTimer timer;
    timer.start();
    Findings findings;
    if (suite.writesRows)
        checkAndTakeBack(suite, findings);
    else
        suite.check(findings);
    return { suite.name, findings.isOk(), findings.text(), timer.elapsed() };
}

// One message per report; a fault is a warning, so that it can be found in a long log.
void log(const char* pattern, const QList<SelfCheckResult>& results)
{
    const bool ok = SelfCheckReport { {}, results }.failures() == 0;
    const QByteArray text = QString::asprintf(pattern, qUtf8Printable(logText(results))).toUtf8();
    if (ok)
        qInfo("%s", text.constData());
    else
        qWarning("%s", text.constData());
}

} // namespace

SelfCheck& SelfCheck::instance()
{
    static SelfCheck check;
    return check;
}

void SelfCheck::setWindowSuite(const Suite& suite)
{
    m_windowSuite = suite;
}

SelfCheckReport SelfCheck::run()
{
    m_running = {};
    while (!advance()) { }
    return m_last;
}

bool SelfCheck::advance()
{
    const QList<Suite>& data = dataSuites();
    const qsizetype done = m_running.suites.size();
    m_running.suites += resultOf(done < data.size() ? data.at(done) : m_windowSuite);
    const qsizetype all = data.size() + (m_windowSuite.check ? 1 : 0);
    if (m_running.suites.size() < all)
        return false;
    conclude();
    return true;
}

void SelfCheck::conclude()
{
    m_last = std::exchange(m_running, {});
    m_last.finishedAt = QDateTime::currentDateTime();
    log("Data self-check result:\n%s", m_last.suites.first(dataSuites().size()));
    if (m_windowSuite.check)
        log("UI self-check result:\n%s", m_last.suites.last(1));
    SelfCheckState::setFailed(m_last.failures() > 0);
    emit finished();
}

SelfCheckReport SelfCheck::lastResult()
{
    return instance().m_last;
}

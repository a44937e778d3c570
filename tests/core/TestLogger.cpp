#include "core/AppPaths.h"
#include "core/Logger.h"
#include "core/LogWriter.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>

#include <atomic>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

QString logFile(QDate date = QDate::currentDate(), const QString& folder = AppPaths::logsDir())
{
    return u"%1/log_%2.txt"_s.arg(folder, date.toString(u"yyyyMMdd"));
}

QStringList linesOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QString text = QString::fromUtf8(file.readAll());
    if (text.endsWith(u'\n'))
        text.chop(1);
    return text.isEmpty() ? QStringList() : text.split(u'\n');
}

// Without the time stamp of 19 characters and the blank behind it.
QStringList textsOf(const QString& path)
{
    QStringList texts;
    for (const QString& line : linesOf(path))
        texts += line.mid(20);
    return texts;
}

QString helperLogsDir()
{
    return QFileInfo(QStringLiteral(CORE_HELPER)).absolutePath() + u"/data/logs"_s;
}

QString helperLogFile()
{
    return logFile(QDate::currentDate(), helperLogsDir());
}

void silentHandler(QtMsgType, const QMessageLogContext&, const QString&) { }

} // namespace

class TestLogger final : public TestCase {
    Q_OBJECT

private slots:
    void linesCarryTimeLevelTextAndFunction()
    {
        const QtMessageHandler tests = qInstallMessageHandler(silentHandler);
        Logger::install();
        qInfo("%s", "启动 100%s %1");
        qDebug("plain");
        qWarning("look");
        qCritical("broken");
        const QMessageLogContext nowhere;
        QMessageLogger(nowhere.file, nowhere.line, nowhere.function).warning("from nowhere");
        Logger::finish();
        qInstallMessageHandler(tests);

        const QString function = QString::fromUtf8(Q_FUNC_INFO);
        const QStringList expected { u"INFO  启动 100%s %1"_s, u"DEBUG plain"_s,
            u"WARN  look   [%1]"_s.arg(function), u"ERROR broken   [%1]"_s.arg(function),
            u"WARN  from nowhere   []"_s };
        QCOMPARE(textsOf(logFile()), expected);
        static const QRegularExpression stamp(u"^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d "_s);
        for (const QString& line : linesOf(logFile()))
            QVERIFY2(stamp.match(line).hasMatch(), qUtf8Printable(line));
    }

    void installingTwiceKeepsOneHandler()
    {
        static std::atomic<int> passedOn = 0;
        passedOn = 0;
        const QtMessageHandler tests = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString&) { ++passedOn; });
        Logger::install();
        Logger::install();
        qInfo("once");
        Logger::finish();
        Logger::finish();
        qInfo("after the end");
        qInstallMessageHandler(tests);
        QCOMPARE(passedOn.load(), 2);
        QCOMPARE(textsOf(logFile()), QStringList { u"INFO  once"_s });
    }

    void everyThreadKeepsItsOrder()
    {
        constexpr int threadCount = 8;
        constexpr int lineCount = 2000;
        const QtMessageHandler tests = qInstallMessageHandler(silentHandler);
        Logger::install();
        std::vector<std::thread> threads;
        threads.reserve(threadCount);
        for (int thread = 0; thread < threadCount; ++thread)
            threads.emplace_back([thread] {
                for (int line = 0; line < lineCount; ++line)
                    qInfo("%d %d", thread, line);
            });
        for (std::thread& thread : threads)
            thread.join();
        Logger::finish();
        qInstallMessageHandler(tests);

        std::array<int, threadCount> next {};
        for (const QString& text : textsOf(logFile())) {
            const QStringList numbers = text.mid(6).split(u' ');
            QCOMPARE(numbers.size(), 2);
            int& expected = next.at(static_cast<std::size_t>(numbers.at(0).toInt()));
            QCOMPARE(numbers.at(1).toInt(), expected++);
        }
        for (const int count : next)
            QCOMPARE(count, lineCount);
    }

    void aNewDayOpensANewFile()
    {
        const QDate eve(2025, 12, 31);
        std::atomic<qint64> today = eve.toJulianDay();
        LogWriter writer(AppPaths::logsDir(), [&today] { return QDate::fromJulianDay(today); });
        writer.enqueue("before midnight\n");
        QVERIFY(writer.waitUntilWritten(std::chrono::seconds(5)));
        today = eve.addDays(1).toJulianDay();
        writer.enqueue("after midnight\n");
        writer.finish();
        QCOMPARE(linesOf(logFile(eve)), QStringList { u"before midnight"_s });
        QCOMPARE(linesOf(logFile(eve.addDays(1))), QStringList { u"after midnight"_s });
    }

    void aFileThatCannotBeOpenedIsTriedAgain()
    {
        const QDate day(2025, 1, 31);
        QVERIFY(QDir().mkpath(logFile(day))); // a directory in the file's place
        LogWriter writer(AppPaths::logsDir(), [day] { return day; });
        writer.enqueue("lost\n");
        QVERIFY(writer.waitUntilWritten(std::chrono::seconds(5)));
        QVERIFY(QDir().rmdir(logFile(day)));
        writer.enqueue("kept\n");
        writer.finish();
        QCOMPARE(linesOf(logFile(day)), QStringList { u"kept"_s });
    }

    void aQuietRunLeavesNoFile()
    {
        Logger::install();
        Logger::finish();
        {
            LogWriter writer(AppPaths::logsDir());
            writer.finish();
        }
        QVERIFY(QDir(AppPaths::logsDir()).isEmpty());
    }

    void linesAfterTheEndAreDropped()
    {
        LogWriter writer(AppPaths::logsDir());
        writer.enqueue("in time\n");
        writer.finish();
        writer.enqueue("too late\n");
        writer.finish();
        QCOMPARE(linesOf(logFile()), QStringList { u"in time"_s });
    }

    void theReasonOfAnAbortReachesTheFile()
    {
        QDir(helperLogsDir()).removeRecursively();
        QProcess helper;
        helper.start(QStringLiteral(CORE_HELPER), { u"fatal"_s });
        QVERIFY(helper.waitForFinished());
        QCOMPARE(helper.exitStatus(), QProcess::CrashExit);
        QCOMPARE(textsOf(helperLogFile()), QStringList { u"FATAL the last words"_s });
    }

    void noLineIsLostAtExit()
    {
        constexpr int lineCount = 20'000;
        for (int run = 0; run < 50; ++run) {
            QDir(helperLogsDir()).removeRecursively();
            QProcess helper;
            helper.setStandardErrorFile(QProcess::nullDevice());
            helper.start(QStringLiteral(CORE_HELPER), { u"burst"_s, QString::number(lineCount) });
            QVERIFY(helper.waitForFinished());
            QCOMPARE(helper.exitCode(), 0);
            const QStringList texts = textsOf(helperLogFile());
            QCOMPARE(texts.size(), lineCount);
            QCOMPARE(texts.first(), u"INFO  line 0"_s);
            QCOMPARE(texts.last(), u"INFO  line %1"_s.arg(lineCount - 1));
        }
    }
};

static const RegisteredTest<TestLogger> registered;

#include "TestLogger.moc"

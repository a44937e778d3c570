#include "support/TestCase.h"
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

struct Outcome {
    QString told; // "ok|message|what the open database holds|", nothing when killed
    QString next; // what the next start finds "|" the backups made

    bool wasKilled() const { return told.isEmpty(); }
    bool succeeded() const { return told.startsWith(u"ok|"_s); }
    QString message() const { return told.section(u'|', 1, 1); }
    QString afterwards() const { return told.section(u'|', 2, 2); }
    QString content() const { return next.section(u'|', 0, 0); }
    QString backups() const { return next.section(u'|', 1, 1); }
    bool isOld() const { return content().startsWith(u"旧 旧,旧 旧/side "_s); }
    bool isNew() const { return content().startsWith(u"新 新,新 新/side "_s); }
    // Nothing mixed, damaged, read-only or left behind.
    bool isSound() const { return (isOld() || isNew()) && content().endsWith(u" ok"_s); }
    // A restore took place or failed for a reason, and the data agrees.
    bool isAsTold() const
    {
        return (succeeded() ? isNew() : isOld()) && succeeded() == message().isEmpty();
    }
};

QList<Outcome> run(const QString& mode, const QString& work)
{
    QList<Outcome> outcomes;
#ifdef BACKUP_HELPER
    QProcess process;
    process.start(QStringLiteral(BACKUP_HELPER), { mode, work });
    process.waitForFinished(240'000);
    const QString output = QString::fromUtf8(process.readAllStandardOutput());
    for (const QString& line : output.split(u'\n', Qt::SkipEmptyParts))
        outcomes.append({ line.section(u'\t', 1, 1), line.section(u'\t', 2) });
#else
    Q_UNUSED(mode)
    Q_UNUSED(work)
#endif
    return outcomes;
}

qsizetype countOf(const QList<Outcome>& outcomes, bool (Outcome::*property)() const)
{
    return std::count_if(outcomes.begin(), outcomes.end(),
        [property](const Outcome& outcome) { return (outcome.*property)(); });
}

// Enough different steps for the run to have taken place.
constexpr qsizetype fewestSteps = 40;

} // namespace

#define VERIFY_OUTCOME(condition)                                                                  \
    QVERIFY2(condition,                                                                            \
        qUtf8Printable(u"step %1: %2 -> %3"_s.arg(                                                 \
            QString::number(step + 1), outcomes[step].told, outcomes[step].next)))

/// Backups and restores that end in the middle, at each of their system calls.
class TestInterruption final : public TestCase {
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
#ifndef BACKUP_HELPER
        QSKIP("system calls can be caught on Linux only");
#endif
    }

    void aKilledRestoreLeavesTheOldOrTheNew()
    {
        const QList<Outcome> outcomes = run(u"kill"_s, u"restore"_s);
        QVERIFY(outcomes.size() > fewestSteps);
        bool committed = false;
        for (qsizetype step = 0; step < outcomes.size(); ++step) {
            const Outcome& outcome = outcomes[step];
            VERIFY_OUTCOME(outcome.isSound());
            VERIFY_OUTCOME(outcome.wasKilled() == (step + 1 < outcomes.size()));
            committed = committed || outcome.isNew();
            VERIFY_OUTCOME(outcome.isNew() == committed);
        }
        QVERIFY(outcomes.first().isOld());
        QVERIFY(outcomes.last().isNew() && outcomes.last().succeeded());
    }

    void aRestoreKilledByChanceLeavesTheOldOrTheNew()
    {
        const QList<Outcome> outcomes = run(u"chance"_s, u"restore"_s);
        QCOMPARE(outcomes.size(), 30);
        QVERIFY(countOf(outcomes, &Outcome::wasKilled) > 5);
        for (qsizetype step = 0; step < outcomes.size(); ++step) {
            VERIFY_OUTCOME(outcomes[step].isSound());
            VERIFY_OUTCOME(outcomes[step].wasKilled() || outcomes[step].isNew());
        }
    }

    void aKilledRepairIsRepaired()
    {
        const QList<Outcome> outcomes = run(u"repair"_s, u"restore"_s);
        QVERIFY(outcomes.size() > fewestSteps);
        QVERIFY(countOf(outcomes, &Outcome::wasKilled) > fewestSteps);
        for (qsizetype step = 0; step < outcomes.size(); ++step) {
            VERIFY_OUTCOME(outcomes[step].isSound());
            VERIFY_OUTCOME(outcomes[step].wasKilled() || outcomes[step].told == u"repaired"_s);
        }
    }

    void aFailedRestoreLeavesTheOldAndSaysWhy()
    {
        const QList<Outcome> outcomes = run(u"fail"_s, u"restore"_s);
        QVERIFY(outcomes.size() > fewestSteps);
        QStringList messages;
        for (qsizetype step = 0; step < outcomes.size(); ++step) {
            const Outcome& outcome = outcomes[step];
            VERIFY_OUTCOME(outcome.isSound() && outcome.isAsTold());
            // The same process could go on with its work.
            VERIFY_OUTCOME(outcome.afterwards() == outcome.content());
            messages += outcome.message();
        }
        QVERIFY(outcomes.last().isNew());
        for (const QString& expected : { u"无法创建自动备份目录："_s, u"WAL 检查点失败："_s,
                 u"当前数据库自动备份失败"_s, u"数据目录不可用："_s,
                 u"数据库文件被占用，无法覆盖："_s, u"数据库文件复制失败："_s, u"无法清理："_s,
                 u"无法创建目录："_s, u"复制失败："_s, u"恢复后数据库无法打开："_s }) {
            const bool seen = std::any_of(messages.begin(), messages.end(),
                [&](const QString& message) { return message.startsWith(expected); });
            QVERIFY2(seen, qUtf8Printable(expected));
        }
    }

    void aDiskThatBreaksLeavesTheOldOrTheNew()
    {
        const QList<Outcome> outcomes = run(u"break"_s, u"restore"_s);
        QVERIFY(outcomes.size() > fewestSteps);
        bool closed = false;
        for (qsizetype step = 0; step < outcomes.size(); ++step) {
            const Outcome& outcome = outcomes[step];
            VERIFY_OUTCOME(outcome.isSound() && outcome.isAsTold());
            if (outcome.afterwards() != u"closed"_s)
                VERIFY_OUTCOME(outcome.afterwards() == outcome.content());
            else if (outcome.message().contains(u"/restore_swap/old"_s))
                closed = true;
        }
        QVERIFY2(closed, "the message names the folder that keeps the old data");
        QVERIFY(outcomes.last().isNew());
    }

    void everyStepIsDurableBeforeTheNextReliesOnIt_data()
    {
        addColumns<QString, QStringList>("work", "order");
        const QStringList end { u"move restore_swap to restore_leftovers"_s, u"sync data"_s,
            u"remove restore_leftovers"_s };
        addCase("a backup", u"backup"_s,
            QStringList { u"sync all of target/backup"_s,
                u"write target/backup/backup_manifest.txt"_s, u"sync target/backup"_s,
                u"sync target"_s });
        addCase("a restore, with something left from an earlier one", u"restore"_s,
            QStringList { u"sync data"_s, u"remove restore_leftovers"_s,
                u"sync all of auto_backup_before_restore/backup"_s,
                u"write auto_backup_before_restore/backup/backup_manifest.txt"_s,
                u"sync auto_backup_before_restore/backup"_s, u"sync auto_backup_before_restore"_s,
                u"sync data"_s, u"sync all of restore_staging"_s,
                u"move restore_staging to restore_swap"_s, u"sync data"_s,
                u"move brixa.db-wal to restore_swap/old/brixa.db-wal"_s,
                u"move brixa.db-shm to restore_swap/old/brixa.db-shm"_s, u"sync restore_swap/old"_s,
                u"sync data"_s, u"move brixa.db to restore_swap/old/brixa.db"_s,
                u"move voucher_assets to restore_swap/old/voucher_assets"_s,
                u"sync restore_swap/old"_s, u"sync data"_s,
                u"move restore_swap/new/brixa.db to brixa.db"_s,
                u"move restore_swap/new/voucher_assets to voucher_assets"_s,
                u"sync restore_swap/new"_s, u"sync data"_s }
                + end);
        addCase("the repair of an exchange whose name did not reach the disk", u"repair"_s,
            QStringList { u"move restore_staging to restore_swap"_s, u"sync data"_s,
                u"move brixa.db-wal to restore_swap/new/brixa.db-wal"_s,
                u"move brixa.db-shm to restore_swap/new/brixa.db-shm"_s,
                u"move brixa.db to restore_swap/new/brixa.db"_s,
                u"move voucher_assets to restore_swap/new/voucher_assets"_s,
                u"sync restore_swap/new"_s, u"sync data"_s,
                u"move restore_swap/old/brixa.db to brixa.db"_s, u"sync restore_swap/old"_s,
                u"sync data"_s, u"move restore_swap/old/brixa.db-wal to brixa.db-wal"_s,
                u"move restore_swap/old/brixa.db-shm to brixa.db-shm"_s,
                u"move restore_swap/old/voucher_assets to voucher_assets"_s,
                u"sync restore_swap/old"_s, u"sync data"_s }
                + end);
        addCase("a start after an exchange", u"start"_s,
            QStringList { u"sync data"_s, u"remove restore_leftovers"_s });
    }

    // No killed process shows what only a power failure loses.
    void everyStepIsDurableBeforeTheNextReliesOnIt()
    {
        QFETCH(QString, work);
        const QList<Outcome> outcomes = run(u"order"_s, work);
        QCOMPARE(outcomes.size(), 1);
        QTEST(outcomes.first().told.split(u"; "_s), "order");
        QVERIFY(outcomes.first().isSound());
    }

    void aKilledBackupIsWholeOrNone()
    {
        const QList<Outcome> outcomes = run(u"kill"_s, u"backup"_s);
        QVERIFY(outcomes.size() > fewestSteps);
        bool whole = false;
        for (qsizetype step = 0; step < outcomes.size(); ++step) {
            VERIFY_OUTCOME(outcomes[step].isSound() && outcomes[step].isOld());
            whole = whole || outcomes[step].backups() == u"whole"_s;
            if (whole)
                VERIFY_OUTCOME(outcomes[step].backups() == u"whole"_s);
            else
                VERIFY_OUTCOME(
                    QStringList({ u"none"_s, u"invalid"_s }).contains(outcomes[step].backups()));
        }
        QVERIFY(whole);
    }

    void aFailedBackupLeavesNothing()
    {
        const QList<Outcome> outcomes = run(u"fail"_s, u"backup"_s);
        QVERIFY(outcomes.size() > fewestSteps);
        for (qsizetype step = 0; step < outcomes.size(); ++step) {
            const Outcome& outcome = outcomes[step];
            VERIFY_OUTCOME(outcome.isSound() && outcome.isOld());
            VERIFY_OUTCOME(outcome.afterwards() == outcome.content());
            VERIFY_OUTCOME(outcome.backups() == (outcome.succeeded() ? u"whole"_s : u"none"_s));
            VERIFY_OUTCOME(outcome.succeeded() || !outcome.message().isEmpty());
        }
        QVERIFY(outcomes.last().succeeded());
    }
};

static const RegisteredTest<TestInterruption> registered;

#include "TestInterruption.moc"

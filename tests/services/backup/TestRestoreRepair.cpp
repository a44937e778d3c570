#include "core/AppPaths.h"
#include "services/backup/BackupSample.h"
#include "services/backup/RestoreRepair.h"
#include "support/TestCase.h"
#include "support/Warnings.h"

#include <QDir>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

// The two folders of the exchange, with the voucher folder's name for short.
const QString live;
const QString oldData = u"restore_swap/old/"_s;
const QString newData = u"restore_swap/new/"_s;
const QString retired = u"restore_leftovers/old/"_s;

// Files of the data directory by name, "" for an empty folder.
bool make(const QStringList& files)
{
    bool made = true;
    for (const QString& file : files) {
        const QString name = file.section(u'=', 0, 0);
        const QString path = AppPaths::dataDir() + u'/' + name;
        made = made
            && (name.endsWith(u'/') ? QDir().mkpath(path)
                                    : BackupSample::put(path, file.section(u'=', 1).toUtf8()));
    }
    return made;
}

// The files that the data directory holds, apart from its other folders.
QStringList found()
{
    QStringList files;
    const auto content = BackupSample::tree(AppPaths::dataDir());
    for (auto item = content.begin(); item != content.end(); ++item) {
        if (!item.key().endsWith(u'/'))
            files += item.key() + u'=' + QString::fromUtf8(item.value());
        else if (item.key().startsWith(u"restore"_s))
            files += item.key();
    }
    return files;
}

QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}

const QStringList oldLive { u"brixa.db=old"_s, u"voucher_assets/a=old"_s };
const QStringList newLive { u"brixa.db=new"_s, u"voucher_assets/a=new"_s };

QStringList in(const QString& folder, const QStringList& files)
{
    QStringList moved;
    for (const QString& file : files)
        moved += folder + file;
    return moved;
}

} // namespace

class TestRestoreRepair final : public TestCase {
    Q_OBJECT

private slots:
    void everyStateIsRepaired_data()
    {
        addColumns<QStringList, QStringList>("files", "expected");
        const QStringList folders { oldData, newData };
        const QStringList log { u"brixa.db-wal=old"_s };
        const auto row = [](const char* name, const QStringList& files,
                             const QStringList& expected) { addCase(name, files, expected); };
        row("nothing to repair", oldLive, oldLive);
        row("killed while the new data were put together",
            oldLive
                + QStringList { u"restore_staging/new/brixa.db=half"_s, u"restore_staging/old/"_s },
            oldLive);
        row("killed after the commit",
            newLive
                + QStringList { u"restore_leftovers/old/brixa.db=old"_s,
                    u"restore_leftovers/new/"_s },
            newLive);
        row("killed before anything moved", folders + oldLive + in(newData, newLive), oldLive);
        row("the old log is aside", folders + oldLive + in(oldData, log) + in(newData, newLive),
            oldLive + log);
        row("the old database is aside",
            folders + in(oldData, { oldLive[0] }) + QStringList { oldLive[1] }
                + in(newData, newLive),
            oldLive);
        row("both old ones are aside, and the start made a voucher folder",
            folders + in(oldData, oldLive) + in(newData, newLive)
                + QStringList { u"voucher_assets/"_s },
            oldLive);
        row("both and the log are aside",
            folders + in(oldData, oldLive + log) + in(newData, newLive), oldLive + log);
        row("the new database is in",
            folders + in(oldData, oldLive) + QStringList { newLive[0] }
                + in(newData, { newLive[1] }),
            oldLive);
        row("the new voucher folder alone reached the disk",
            folders + in(oldData, oldLive) + QStringList { newLive[1] }
                + in(newData, { newLive[0] }),
            oldLive);
        row("both new ones are in", folders + in(oldData, oldLive) + newLive, oldLive);
        row("the new database was opened",
            folders + in(oldData, oldLive + log) + newLive
                + QStringList { u"brixa.db-wal=new"_s, u"brixa.db-shm=new"_s },
            oldLive + log);
        row("taking back had moved the new database out, but not yet its log",
            folders + in(oldData, oldLive + log) + in(newData, newLive)
                + QStringList { u"brixa.db-wal=new"_s },
            oldLive + log);
        row("taking back had moved the old database in, but not yet its log",
            folders + QStringList { oldLive[0] } + in(oldData, { oldLive[1], log[0] })
                + in(newData, newLive),
            oldLive + log);
        row("taking back had only its end before it", folders + oldLive + in(newData, newLive),
            oldLive);
        row("leftovers of an earlier one too",
            folders + in(oldData, oldLive) + newLive
                + QStringList { u"restore_leftovers/old/x=older"_s },
            oldLive);
        row("the name of an exchange did not reach the disk",
            in(u"restore_staging/old/"_s, oldLive) + in(u"restore_staging/new/"_s, newLive),
            oldLive);
        row("both new ones are in, and the folder they came from is gone",
            in(oldData, oldLive) + newLive, oldLive);
        row("nothing is aside, and the folder for it is gone", oldLive + in(newData, newLive),
            oldLive);
        row("nothing is aside, and the new data are gone", oldLive + QStringList { oldData },
            oldLive);
        row("nothing but the name is left", oldLive + QStringList { u"restore_swap/"_s }, oldLive);
    }

    void everyStateIsRepaired()
    {
        QFETCH(QStringList, files);
        QFETCH(QStringList, expected);
        QVERIFY(make(files));
        const bool unfinished
            = !files.filter(QRegularExpression(u"^restore_(swap|staging)/old/."_s)).isEmpty();
        if (unfinished)
            QTest::ignoreMessage(QtWarningMsg,
                "A restore was interrupted: putting the data from before it back in place");
        const auto problem = RestoreRepair::run();
        QCOMPARE(problem.value_or(QString()), QString());
        QCOMPARE(sorted(found()), sorted(expected));
        QVERIFY(!RestoreRepair::run());
        QCOMPARE(sorted(found()), sorted(expected));
    }

    void whatIsNotOursStaysAndStopsTheStart_data()
    {
        QTest::addColumn<QStringList>("files");
        const QStringList both = in(oldData, oldLive) + in(newData, newLive);
        addCase("a database in the old one's place",
            QStringList { u"brixa.db=somebody's"_s, u"voucher_assets/"_s } + both);
        addCase("files in the old voucher folder's place",
            QStringList { u"voucher_assets/b=somebody's"_s } + both);
    }

    void whatIsNotOursStaysAndStopsTheStart()
    {
        QFETCH(QStringList, files);
        QVERIFY(make(files));
        for (int start = 1; start <= 2; ++start) {
            expectWarnings({ u"A restore was interrupted"_s, u"Restore: unexpected "_s });
            const auto problem = RestoreRepair::run();
            QVERIFY(problem);
            QVERIFY(problem->startsWith(u"上次数据恢复中断，原有数据无法放回原处，仍保存在："_s
                + AppPaths::dataDir() + u"/restore_swap/old\n\n程序未删除任何文件。"_s));
            const QStringList before = sorted(files.filter(QRegularExpression(u"[^/]$"_s)));
            QCOMPARE(sorted(found().filter(QRegularExpression(u"[^/]$"_s))), before);
        }
    }

    void whatMayBeTheOnlyCopyStopsTheStart_data()
    {
        addColumns<QStringList, QString>("files", "told");
        addCase("replaced data beside no database", in(retired, oldLive), u"/restore_leftovers"_s);
        addCase("replaced data beside an empty database",
            in(retired, oldLive) + QStringList { u"brixa.db="_s }, u"/restore_leftovers"_s);
        addCase("new data beside no database", in(newData, newLive), u"/restore_leftovers"_s);
        addCase("old data in two places",
            in(oldData, oldLive) + in(u"restore_staging/old/"_s, oldLive),
            u"/restore_staging/old"_s);
    }

    void whatMayBeTheOnlyCopyStopsTheStart()
    {
        QFETCH(QStringList, files);
        QFETCH(QString, told);
        QVERIFY(make(files));
        const auto bytesOf = [](const QStringList& list) {
            QStringList bytes;
            for (const QString& file : list.filter(QRegularExpression(u"[^/]$"_s)))
                bytes += file.section(u'/', -1);
            return sorted(bytes);
        };
        for (int start = 1; start <= 2; ++start) {
            if (told.endsWith(u"old"_s)) {
                expectWarnings({ u"A restore was interrupted"_s, u"Restore: two folders"_s });
            }
            const auto problem = RestoreRepair::run();
            QVERIFY(problem);
            QVERIFY2(problem->contains(AppPaths::dataDir() + told), qUtf8Printable(*problem));
            QCOMPARE(bytesOf(found()), bytesOf(files));
        }
    }
};

static const RegisteredTest<TestRestoreRepair> registered;

#include "TestRestoreRepair.moc"

#include "support/PdfTools.h"
#include "support/TestCase.h"
#include "support/TestFile.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

struct Run {
    int status = -1;
    QString output;
    QString complaint;

    /// The files that the demo lists under a heading.
    QStringList files(const QString& heading) const
    {
        QStringList found;
        bool listed = false;
        for (const QString& line : output.split(u'\n')) {
            if (line.startsWith(u"  ") && listed)
                found += line.trimmed();
            else
                listed = line.startsWith(heading);
        }
        return found;
    }
};

Run runDemo(const QString& folder)
{
    QProcess demo;
    demo.start(QStringLiteral(BRIXA_DEMO), { u"--short"_s, u"--folder"_s, folder });
    Run run;
    if (demo.waitForFinished(240'000) && demo.exitStatus() == QProcess::NormalExit)
        run.status = demo.exitCode();
    run.output = QString::fromUtf8(demo.readAllStandardOutput());
    run.complaint = QString::fromUtf8(demo.readAllStandardError());
    return run;
}

} // namespace

class TestDemo final : public TestCase {
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    Run m_run;

private slots:
    void initTestCase()
    {
        m_run = runDemo(m_dir.path());
        QVERIFY2(m_run.status == 0, qUtf8Printable(m_run.output + m_run.complaint));
    }

    void everyWindowHasAPictureInBothThemes()
    {
        const QStringList pictures = m_run.files(u"Pictures"_s);
        QCOMPARE(pictures.filter(u"/dark/"_s).size(), pictures.filter(u"/light/"_s).size());
        QVERIFY(pictures.size() >= 50);
        for (const QString& path : pictures) {
            const QImage picture(path);
            QVERIFY2(!picture.isNull(), qUtf8Printable(path));
            if (path.contains(u"/page-"_s))
                QCOMPARE(picture.size(), QSize(1440, 900));
        }
    }

    void documentsNameTheCompanyAndTheirNumber()
    {
        const QStringList documents = m_run.files(u"PDF documents"_s);
        QVERIFY(documents.size() >= 4);
        for (const QString& path : documents) {
            const QString text = PdfTools::pageTexts(path).join(QString());
            QVERIFY2(text.contains(u"杭州山岚设计有限公司"_s), qUtf8Printable(text));
            QVERIFY2(text.contains(QFileInfo(path).fileName().left(16)), qUtf8Printable(text));
        }
    }

    void exportsHoldTheLedgerAndTheReport()
    {
        const QStringList exports = m_run.files(u"CSV files"_s);
        QCOMPARE(exports.size(), 2);
        const QByteArray ledger = TestFile::bytesOf(exports.at(0));
        QVERIFY(ledger.startsWith("\xEF\xBB\xBF"
                                  "ID,日期,"));
        QVERIFY(ledger.count("\r\n") > 50);
        QVERIFY(TestFile::bytesOf(exports.at(1)).contains("合计"));
    }

    void theBackupIsWhole()
    {
        const QDir backups(m_dir.filePath(u"data/backups"_s));
        const QStringList folders = backups.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        QCOMPARE(folders, QStringList { u"brixa_backup_20251218_085000"_s });
        QVERIFY(QFile::exists(backups.filePath(folders.first() + u"/backup_manifest.txt"_s)));
    }

    void recordsThatLieInTheFolderAreLeftAlone()
    {
        const QByteArray before = TestFile::bytesOf(m_dir.filePath(u"data/brixa.db"_s));
        const Run again = runDemo(m_dir.path());
        QCOMPARE(again.status, 1);
        QVERIFY2(again.complaint.startsWith(u"FAILED at step \"start\""_s),
            qUtf8Printable(again.complaint));
        QVERIFY(TestFile::bytesOf(m_dir.filePath(u"data/brixa.db"_s)) == before);
    }

    void aFailingStepIsNamed()
    {
        // A name that nothing can be written under: it leads nowhere.
        QTemporaryDir dir;
        QVERIFY(QFile::link(dir.filePath(u"missing/folder"_s), dir.filePath(u"pictures"_s)));
        const Run run = runDemo(dir.path());
        QCOMPARE(run.status, 1);
        QVERIFY2(run.complaint.contains(u"FAILED at step \"first start\": the picture"_s),
            qUtf8Printable(run.complaint));
    }
};

static const RegisteredTest<TestDemo> registered;

#include "TestDemo.moc"

#include "FuzzTargets.h"
#include "support/TestCase.h"
#include "support/TestFile.h"

#include <QDir>

using namespace Qt::StringLiterals;

/// What the fuzzers start from and what they once found.
class TestCorpus final : public TestCase {
    Q_OBJECT

private slots:
    void theCorpusBreaksNoPromise_data()
    {
        addColumns<QString>("name");
        for (const FuzzTargets::Target& target : FuzzTargets::all())
            addCase(qUtf8Printable(target.name.toString()), target.name.toString());
    }

    void theCorpusBreaksNoPromise()
    {
        QFETCH(QString, name);
        const auto targets = FuzzTargets::all();
        const auto target = std::find_if(targets.begin(), targets.end(),
            [&name](const FuzzTargets::Target& each) { return each.name == name; });
        const QDir corpus(QStringLiteral(BRIXA_CORPUS) + u'/' + name);
        const QStringList files = corpus.entryList(QDir::Files, QDir::Name);
        QVERIFY(!files.isEmpty());
        for (const QString& file : files)
            target->run(TestFile::bytesOf(corpus.filePath(file)));
    }
};

static const RegisteredTest<TestCorpus> registered;

#include "TestCorpus.moc"

#include "db/SqlScript.h"
#include "support/TestCase.h"

using namespace Qt::StringLiterals;

class TestSqlScript final : public TestCase {
    Q_OBJECT

private slots:
    void scriptsAreCutIntoStatements_data()
    {
        addColumns<QString, QStringList>("script", "statements");
        const auto row = [](const char* name, const QString& script,
                             const QStringList& statements) { addCase(name, script, statements); };
        row("empty", u""_s, {});
        row("two statements", u"A; B;"_s, { u"A;"_s, u" B;"_s });
        row("the last one without semicolon", u"A; B"_s, { u"A;"_s, u" B"_s });
        row("white space at the end", u"A;\n \n"_s, { u"A;"_s });
        row("semicolons in a row", u"A;;  ;B;"_s, { u"A;"_s, u"B;"_s });
        row("semicolon in quotes", u"A ';' ; B;"_s, { u"A ';' ;"_s, u" B;"_s });
        row("semicolon after a doubled quote", u"A 'it''s;' ;"_s, { u"A 'it''s;' ;"_s });
        row("quoted text of one quote", u"A '''' ; B;"_s, { u"A '''' ;"_s, u" B;"_s });
        row("comment mark in quotes", u"A '--' ; B;"_s, { u"A '--' ;"_s, u" B;"_s });
        row("double quotes", u"A \"x;'--\" ; B;"_s, { u"A \"x;'--\" ;"_s, u" B;"_s });
        row("semicolon and quote in a comment", u"A -- it's; so\n; B;"_s,
            { u"A -- it's; so\n;"_s, u" B;"_s });
        row("comment alone between semicolons", u"A; -- nothing\n ; B;"_s, { u"A;"_s, u" B;"_s });
        row("comment alone at the end", u"A; -- end"_s, { u"A;"_s, u" -- end"_s });
        row("a single minus", u"A 1-1; B;"_s, { u"A 1-1;"_s, u" B;"_s });

        const QString body
            = u" TRIGGER t AFTER DELETE ON a BEGIN DELETE FROM b; DELETE FROM c; END;"_s;
        row("trigger", u"CREATE"_s + body + u" B;"_s, { u"CREATE"_s + body, u" B;"_s });
        row("temp trigger", u"CREATE TEMP"_s + body + u"B;"_s,
            { u"CREATE TEMP"_s + body, u"B;"_s });
        row("temporary trigger", u"create temporary"_s + body + u"B;"_s,
            { u"create temporary"_s + body, u"B;"_s });
        const QString lower
            = u"-- first\ncreate trigger t begin\n a;\n b; -- END\n end -- of t\n;"_s;
        row("trigger between comments, lower case", lower + u"B;"_s, { lower, u"B;"_s });
        const QString quoted = u"CREATE TRIGGER t BEGIN SELECT 'END'; SELECT 'END;'; END;"_s;
        row("END in quotes closes nothing", quoted + u"B;"_s, { quoted, u"B;"_s });
        row("a word that ends in END", u"CREATE TRIGGER t BEGIN SELECT weekEND; END; B;"_s,
            { u"CREATE TRIGGER t BEGIN SELECT weekEND; END;"_s, u" B;"_s });
    }

    void scriptsAreCutIntoStatements()
    {
        QFETCH(QString, script);
        QTEST(SqlScript::splitStatements(script), "statements");
    }

    void lineCommentsAreRemoved()
    {
        const auto stripped = SqlScript::stripLineComments;
        QCOMPARE(stripped(u"a -- b\nc"_s), u"a \nc"_s);
        QCOMPARE(stripped(u"a--b"_s), u"a"_s);
        QCOMPARE(stripped(u"'--' '''--'"_s), u"'--' '''--'"_s);
        QCOMPARE(stripped(u"\"--\" --x"_s), u"\"--\" "_s);
        QCOMPARE(stripped(u"-- it's\n'a' -- b"_s), u"\n'a' "_s);
        QCOMPARE(stripped(u"1-1"_s), u"1-1"_s);
    }
};

static const RegisteredTest<TestSqlScript> registered;

#include "TestSqlScript.moc"

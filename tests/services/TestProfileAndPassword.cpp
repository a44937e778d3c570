#include "core/CreditCode.h"
#include "services/Password.h"
#include "services/ProfileRules.h"
#include "support/TestCase.h"

using namespace Qt::StringLiterals;

class TestProfileAndPassword final : public TestCase {
    Q_OBJECT

private slots:
    void creditCodesCarryTheirCheckCharacter()
    {
        // The example of the standard.
        const QString code = u"91350100M000100Y43"_s;
        for (const QString& typed : { code, u" 91350100m000100y43 "_s }) {
            QVERIFY(CreditCode::isValid(CreditCode::normalized(typed)));
            QVERIFY(ProfileRules::creditCodeRemark(typed).isEmpty());
        }
        // Too short, too long, with a letter that is never used, the old number, wide digits.
        for (const QString& wrong : { code.chopped(1), code + u'0', u"9135010OM000100Y43"_s,
                 u"350100100001234"_s, u"９１３５０１００M000100Y43"_s }) {
            QVERIFY(!CreditCode::isValid(CreditCode::normalized(wrong)));
            QVERIFY(!ProfileRules::creditCodeRemark(wrong).isEmpty());
        }
    }

    void oneWrongCharacterIsNoticed()
    {
        const QString code = u"91350100M000100Y43"_s;
        const QString alphabet = u"0123456789ABCDEFGHJKLMNPQRTUWXY"_s;
        for (qsizetype i = 0; i < code.size(); ++i) {
            for (const QChar c : alphabet) {
                QString wrong = code;
                wrong[i] = c;
                QCOMPARE(CreditCode::isValid(wrong), wrong == code);
            }
        }
        QVERIFY2(ProfileRules::creditCodeRemark(u"  "_s).isEmpty(), "an empty code is no mistake");
    }

    void bothNamesAreRequired()
    {
        const auto problemOf = [](const QString& company, const QString& shareholder) {
            CompanyProfile profile;
            profile.companyName = company;
            profile.shareholderName = shareholder;
            const auto problem = ProfileRules::firstProblem(profile);
            const bool isComplete = ProfileRules::isComplete(profile);
            if (isComplete == problem.has_value())
                return u"(contradiction)"_s;
            return problem ? problem->title + u'|' + problem->text : QString();
        };
        QCOMPARE(problemOf(u"杭州山岚设计有限公司"_s, u"林岚"_s), QString());
        QCOMPARE(problemOf(u" 　"_s, u"林岚"_s), u"信息不完整|请填写公司名称。"_s);
        QCOMPARE(problemOf(u"杭州山岚设计有限公司"_s, {}), u"信息不完整|请填写股东姓名。"_s);
        QCOMPARE(problemOf({}, {}), u"信息不完整|请填写公司名称。"_s);
    }

    void textsHaveALongestLength()
    {
        for (const ProfileRules::FieldRow& row : ProfileRules::fieldRows) {
            CompanyProfile profile;
            profile.companyName = u"甲"_s;
            profile.shareholderName = u"乙"_s;
            profile.*row.text = u"😀"_s.repeated(row.longest) + u' ';
            QVERIFY2(!ProfileRules::firstProblem(profile), qPrintable(row.label.toString()));
            profile.*row.text += u'x';
            const auto problem = ProfileRules::firstProblem(profile);
            QVERIFY2(problem && problem->field == row.field, qPrintable(row.label.toString()));
            QVERIFY2(ProfileRules::isComplete(profile), "what is stored keeps serving");
        }
        CompanyProfile profile;
        profile.companyName = QString(101, u'甲');
        profile.shareholderName = u"乙"_s;
        QCOMPARE(ProfileRules::firstProblem(profile)->text, u"公司名称最多 100 个字。"_s);
    }

    void textsAreStoredTrimmed()
    {
        CompanyProfile profile;
        profile.companyName = u" 甲 "_s;
        profile.creditCode = u" \u202a91350100m000100y43\u202c "_s;
        profile.shareholderName = u"　乙"_s;
        profile.bankName = u"丙 "_s;
        profile.bankAccount = u" 3301 "_s;
        profile.address = u" \u202e丁"_s;
        profile.phone = u" 0571 "_s;
        const CompanyProfile stored = ProfileRules::normalized(profile);
        const QStringList texts { stored.companyName, stored.creditCode, stored.shareholderName,
            stored.bankName, stored.bankAccount, stored.address, stored.phone };
        QCOMPARE(texts.join(u'|'), u"甲|91350100M000100Y43|乙|丙|3301|丁|0571"_s);
    }

    void onlyTheRightPasswordFits()
    {
        const QString word = u"山岚Design 2025"_s;
        const auto secret = Password::makeSecret(word);
        QVERIFY(secret);
        QCOMPARE(Password::verify(word, *secret), Password::Check::Fits);
        for (const QString& wrong : { u"山岚design 2025"_s, u"山岚Design 2025 "_s, QString() })
            QCOMPARE(Password::verify(wrong, *secret), Password::Check::Wrong);
        QVERIFY(!secret->hash.contains(word));
        QVERIFY(secret->hash.startsWith(u"scrypt$131072$8$1$"_s));

        const auto again = Password::makeSecret(word);
        QVERIFY(again && again->salt != secret->salt && again->hash != secret->hash);
        QCOMPARE(again->salt.size(), 32);
    }

    void foreignSecretsFitNoPassword_data()
    {
        addColumns<QString, QString>("hash", "salt");
        const QString salt(32, u'a');
        const QString key(64, u'0');
        addCase("nothing stored", QString(), QString());
        addCase("plain text", u"123456"_s, salt);
        addCase("other method", u"pbkdf2$131072$8$1$"_s + key, salt);
        addCase("short key", u"scrypt$1024$8$1$00"_s, salt);
        addCase("empty key", u"scrypt$1024$8$1$"_s, salt);
        addCase("no salt", u"scrypt$1024$8$1$"_s + key, QString());
        addCase("cost of no power of two", u"scrypt$1000$8$1$"_s + key, salt);
        addCase("cost that eats the machine", u"scrypt$1073741824$8$1$"_s + key, salt);
        addCase("negative cost", u"scrypt$-2$8$1$"_s + key, salt);
    }

    void foreignSecretsFitNoPassword()
    {
        QFETCH(QString, hash);
        QFETCH(QString, salt);
        QCOMPARE(Password::verify(u"123456"_s, { hash, salt }), Password::Check::Wrong);
        QCOMPARE(Password::verify(QString(), { hash, salt }), Password::Check::Wrong);
    }

    void waitingGrowsAfterFiveFailures()
    {
        QList<int> waits;
        for (int failures = 0; failures <= 13; ++failures)
            waits += Password::waitSecondsAfter(failures);
        QCOMPARE(waits, (QList<int> { 0, 0, 0, 0, 0, 5, 10, 20, 40, 80, 160, 300, 300, 300 }));
        QCOMPARE(Password::waitSecondsAfter(1'000'000), 300);
    }

    void newPasswordsAreChecked()
    {
        const auto problemOf = [](const QString& password, const QString& repeated) {
            const auto problem = Password::firstProblem(password, repeated);
            return problem ? problem->text : QString();
        };
        QCOMPARE(problemOf(u"abc123"_s, u"abc123"_s), QString());
        QCOMPARE(problemOf(u"abc12"_s, u"abc12"_s), u"密码至少需要 6 个字符。"_s);
        QCOMPARE(problemOf(u"      "_s, u"      "_s), u"密码不能只由空格组成。"_s);
        QCOMPARE(problemOf(u"abc123"_s, u"abc124"_s), u"两次输入的密码不一致。"_s);
    }
};

static const RegisteredTest<TestProfileAndPassword> registered;

#include "TestProfileAndPassword.moc"

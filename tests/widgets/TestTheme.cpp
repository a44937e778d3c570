#include "support/TestCase.h"
#include "theme/Icons.h"
#include "theme/Logo.h"
#include "theme/Theme.h"
#include "widgets/FieldLabel.h"
#include "widgets/NavButton.h"
#include "widgets/Pictures.h"

#include <QDir>
#include <QLabel>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

class TestTheme final : public TestCase {
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
        Theme::instance().apply(ThemeMode::Light);
    }

    void switchingRepaintsAndRecolours()
    {
        NavButton button(u"ledger"_s, u"资金台账"_s);
        FieldLabel label(u"公司名称"_s, Required::Yes);
        button.show();
        QVERIFY(QTest::qWaitForWindowExposed(&button));
        const QPixmap light = button.grab();
        QVERIFY(label.text().contains(tokenColor(Token::DangerText, ThemeMode::Light).name()));

        QSignalSpy changed(&Theme::instance(), &Theme::changed);
        Theme::instance().apply(ThemeMode::Dark);
        QCOMPARE(changed.count(), 1);
        QVERIFY(label.text().contains(tokenColor(Token::DangerText, ThemeMode::Dark).name()));
        QVERIFY(!label.text().contains(tokenColor(Token::DangerText, ThemeMode::Light).name()));
        QVERIFY(button.grab().toImage() != light.toImage());
        Theme::instance().apply(ThemeMode::Dark);
        QCOMPARE(changed.count(), 1);
    }

    void switchingRecoloursLinksInLabels()
    {
        QLabel label(u"<a href='x'>阅读免责声明全文</a>"_s);
        const auto inkOf = [&label] { return Pictures::opaqueColors(label.grab()); };
        QVERIFY(inkOf().contains(tokenColor(Token::Link, ThemeMode::Light).rgb()));
        Theme::instance().apply(ThemeMode::Dark);
        QVERIFY(inkOf().contains(tokenColor(Token::Link, ThemeMode::Dark).rgb()));
        QVERIFY(!inkOf().contains(tokenColor(Token::Link, ThemeMode::Light).rgb()));
        QCOMPARE(label.text(), u"<a href='x'>阅读免责声明全文</a>"_s);
    }

    void everyIconIsDrawn()
    {
        QStringList names = QDir(u":/brixa/icons"_s).entryList({ u"*.svg"_s }, QDir::Files);
        names.replaceInStrings(u".svg"_s, QString());
        QVERIFY(!names.isEmpty());
        const QSet<QRgb> ink { tokenColor(Token::TextPrimary, ThemeMode::Light).rgb() };
        for (const QString& name : std::as_const(names)) {
            for (const int size : { 16, 24, 48 }) {
                const QPixmap pixmap = Icons::pixmap(name, Token::TextPrimary, size, 2.0);
                QCOMPARE(pixmap.size(), QSize(2 * size, 2 * size));
                QCOMPARE(pixmap.devicePixelRatio(), 2.0);
                QVERIFY2(!Pictures::isBlank(pixmap), qUtf8Printable(name));
                QVERIFY2(Pictures::opaqueColors(pixmap) == ink, qUtf8Printable(name));
            }
        }
    }

    void iconFollowsThemeAndDisabledState()
    {
        const QIcon icon = Icons::icon(u"folder", Token::Link);
        const auto inkOf = [&icon](QIcon::Mode mode) {
            return Pictures::opaqueColors(icon.pixmap(QSize(24, 24), 1.0, mode));
        };
        const auto only = [](Token token, ThemeMode mode) {
            return QSet<QRgb> { tokenColor(token, mode).rgb() };
        };
        QCOMPARE(inkOf(QIcon::Normal), only(Token::Link, ThemeMode::Light));
        QCOMPARE(inkOf(QIcon::Disabled), only(Token::TextDisabled, ThemeMode::Light));
        Theme::instance().apply(ThemeMode::Dark);
        QCOMPARE(inkOf(QIcon::Normal), only(Token::Link, ThemeMode::Dark));
        QCOMPARE(icon.pixmap(QSize(24, 24), 2.0).size(), QSize(48, 48));
    }

    void logoIsDrawnAtEverySize()
    {
        for (const int size : { 16, 24, 32, 48, 64, 128, 256 }) {
            QVERIFY(Logo::icon().availableSizes().contains(QSize(size, size)));
            const QPixmap logo = Logo::pixmap(size);
            QCOMPARE(logo.size(), QSize(size, size));
            // Ground, spine and the other brick: three flat colours at least.
            QVERIFY(Pictures::opaqueColors(logo).size() >= 3);
            QVERIFY(Pictures::opaqueColors(logo).contains(QColor(Qt::white).rgb()));
        }
    }
};

static const RegisteredTest<TestTheme> registered;

#include "TestTheme.moc"

#include "widgets/TestTheme.h"

#include "theme/Icons.h"
#include "theme/Logo.h"
#include "theme/Theme.h"
#include "widgets/FieldLabel.h"
#include "widgets/NavButton.h"
#include "widgets/Pictures.h"

#include <QApplication>
#include <QLabel>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

QStringList iconNames()
{
    static const QString names
        = u"dashboard ledger documents projects vouchers reports settings info warning danger "
          "success close check chevron-down chevron-up chevron-left chevron-right calendar search "
          "plus minus folder file image pdf print download upload edit trash link unlink lock key "
          "eye eye-off refresh filter user building shield clock paperclip copy external moon sun "
          "database backup restore"_s;
    return names.split(u' ');
}

} // namespace

void TestTheme::init()
{
    TestCase::init();
    Theme::instance().apply(ThemeMode::Light);
}

void TestTheme::storedCodeNamesTheMode()
{
    QCOMPARE(fromCode<ThemeMode>(u"light"), ThemeMode::Light);
    QCOMPARE(fromCode<ThemeMode>(u"dark"), ThemeMode::Dark);
    QCOMPARE(fromCode<ThemeMode>(u"blue"), ThemeMode::Light);
    QCOMPARE(codeOf(ThemeMode::Dark), u"dark"_s);
}

void TestTheme::tokensAreFoundByTheirNames()
{
    for (int i = 0; i < tokenCount; ++i) {
        const auto token = static_cast<Token>(i);
        QCOMPARE(tokenFromName(tokenName(token)), token);
    }
    QCOMPARE(tokenColor(Token::Primary, ThemeMode::Light).name(), u"#1d5fd1"_s);
    QCOMPARE(tokenColor(Token::Primary, ThemeMode::Dark).name(), u"#2f6ad9"_s);
}

void TestTheme::unknownPlaceholderHasNoToken()
{
    QVERIFY(!tokenFromName(u"bgUnheardOf").has_value());
}

void TestTheme::paletteFollowsTheMode_data()
{
    QTest::addColumn<ThemeMode>("mode");
    QTest::newRow("light") << ThemeMode::Light;
    QTest::newRow("dark") << ThemeMode::Dark;
}

void TestTheme::paletteFollowsTheMode()
{
    QFETCH(ThemeMode, mode);
    Theme::instance().apply(mode);
    const QPalette palette = QApplication::palette();
    QCOMPARE(palette.color(QPalette::Link), tokenColor(Token::Link, mode));
    QCOMPARE(palette.color(QPalette::PlaceholderText), tokenColor(Token::TextTertiary, mode));
    QCOMPARE(palette.color(QPalette::Disabled, QPalette::WindowText),
        tokenColor(Token::TextDisabled, mode));
    QCOMPARE(QToolTip::palette().color(QPalette::ToolTipBase), tokenColor(Token::BgTooltip, mode));
    QCOMPARE(Theme::instance().hex(Token::BgCard), tokenColor(Token::BgCard, mode).name());
}

void TestTheme::switchingRepaintsAndRecolours()
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
}

void TestTheme::switchingRecoloursLinksInLabels()
{
    QLabel label(u"<a href='x'>阅读免责声明全文</a>"_s);
    const auto inkOf = [&label] { return Pictures::opaqueColors(label.grab()); };
    QVERIFY(inkOf().contains(tokenColor(Token::Link, ThemeMode::Light).rgb()));
    Theme::instance().apply(ThemeMode::Dark);
    QVERIFY(inkOf().contains(tokenColor(Token::Link, ThemeMode::Dark).rgb()));
    QVERIFY(!inkOf().contains(tokenColor(Token::Link, ThemeMode::Light).rgb()));
    QCOMPARE(label.text(), u"<a href='x'>阅读免责声明全文</a>"_s);
}

void TestTheme::drawingsAndNamesAgree()
{
    QStringList wanted = iconNames();
    wanted.sort();
    QCOMPARE(Icons::names(), wanted);
}

void TestTheme::everyIconIsDrawn_data()
{
    QTest::addColumn<QString>("name");
    for (const QString& name : iconNames())
        QTest::newRow(qUtf8Printable(name)) << name;
}

void TestTheme::everyIconIsDrawn()
{
    QFETCH(QString, name);
    const QColor ink = tokenColor(Token::TextPrimary, ThemeMode::Light);
    for (const int size : { 16, 24, 48 }) {
        const QPixmap pixmap = Icons::pixmap(name, Token::TextPrimary, size, 2.0);
        QCOMPARE(pixmap.size(), QSize(2 * size, 2 * size));
        QCOMPARE(pixmap.devicePixelRatio(), 2.0);
        QVERIFY(!Pictures::isBlank(pixmap));
        QCOMPARE(Pictures::opaqueColors(pixmap), QSet<QRgb> { ink.rgb() });
    }
}

void TestTheme::iconFollowsThemeAndDisabledState()
{
    const QIcon icon = Icons::icon(u"folder", Token::Link);
    const auto inkOf = [&icon](QIcon::Mode mode) {
        return Pictures::opaqueColors(icon.pixmap(QSize(24, 24), 1.0, mode));
    };
    const auto only
        = [](Token token, ThemeMode mode) { return QSet<QRgb> { tokenColor(token, mode).rgb() }; };
    QCOMPARE(inkOf(QIcon::Normal), only(Token::Link, ThemeMode::Light));
    QCOMPARE(inkOf(QIcon::Disabled), only(Token::TextDisabled, ThemeMode::Light));
    Theme::instance().apply(ThemeMode::Dark);
    QCOMPARE(inkOf(QIcon::Normal), only(Token::Link, ThemeMode::Dark));
    QCOMPARE(icon.pixmap(QSize(24, 24), 2.0).size(), QSize(48, 48));
}

void TestTheme::unknownIconIsReported()
{
    QTest::ignoreMessage(QtWarningMsg, "There is no drawing :/brixa/icons/no-such-icon.svg");
    QVERIFY(Icons::pixmap(u"no-such-icon", Token::Link, 24, 1.0).isNull());
}

void TestTheme::logoIsDrawnAtEverySize_data()
{
    QTest::addColumn<int>("size");
    for (const int size : { 16, 24, 32, 48, 64, 128, 256 })
        QTest::addRow("%d pixels", size) << size;
}

void TestTheme::logoIsDrawnAtEverySize()
{
    QFETCH(int, size);
    QVERIFY(Logo::icon().availableSizes().contains(QSize(size, size)));
    const QPixmap logo = Logo::pixmap(size);
    QCOMPARE(logo.size(), QSize(size, size));
    // Ground, spine and the other brick: three flat colours at least.
    QVERIFY(Pictures::opaqueColors(logo).size() >= 3);
    QVERIFY(Pictures::opaqueColors(logo).contains(QColor(Qt::white).rgb()));
}

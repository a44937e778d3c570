#include "support/TestCase.h"
#include "theme/StyleSheet.h"
#include "widgets/BannerKind.h"
#include "widgets/Contrast.h"

#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

// Where a text without a ground of its own may stand.
constexpr auto surfaces
    = std::to_array<Token>({ Token::BgPage, Token::BgCard, Token::BgNav, Token::BgTopBar });

QByteArray rowName(ThemeMode mode, const QString& what)
{
    return u"%1: %2"_s.arg(codeOf(mode), what).toUtf8();
}

void addPairColumns()
{
    addColumns<QColor, QColor, double>("text", "ground", "minimum");
}

void addPairs(const QString& what, std::initializer_list<Token> inks,
    std::initializer_list<Token> grounds, double minimum)
{
    for (const ThemeMode mode : allValues<ThemeMode>()) {
        for (const Token ink : inks) {
            for (const Token ground : grounds) {
                const QString pair = u"%1, %2 on %3"_s.arg(what, tokenName(ink), tokenName(ground));
                addCase(rowName(mode, pair).constData(), tokenColor(ink, mode),
                    tokenColor(ground, mode), minimum);
            }
        }
    }
}

void checkPair()
{
    QFETCH(QColor, text);
    QFETCH(QColor, ground);
    QFETCH(double, minimum);
    const double reached = Contrast::ratio(text, ground);
    QVERIFY2(reached >= minimum, qUtf8Printable(QString::number(reached, 'f', 2)));
}

QList<Contrast::Rule> enabledRules(ThemeMode mode)
{
    QList<Contrast::Rule> rules = Contrast::textRules(styleSheetFor(mode));
    rules.removeIf(
        [](const Contrast::Rule& rule) { return rule.selector.contains(u":disabled"_s); });
    return rules;
}

} // namespace

class TestContrast final : public TestCase {
    Q_OBJECT

private slots:
    void rulesOfTheStyleSheetAreReadable_data()
    {
        addPairColumns();
        for (const ThemeMode mode : allValues<ThemeMode>()) {
            int number = 0;
            for (const Contrast::Rule& rule : enabledRules(mode)) {
                const QString name = u"%1 %2"_s.arg(QString::number(++number), rule.selector);
                QList<QColor> grounds { rule.ground };
                if (!rule.ground.isValid()) {
                    grounds.clear();
                    for (const Token surface : surfaces)
                        grounds += tokenColor(surface, mode);
                }
                for (const QColor& ground : grounds)
                    addCase(rowName(mode, name + u" on "_s + ground.name()).constData(), rule.text,
                        ground, Contrast::text);
            }
            QVERIFY2(number > 40, "the style sheet was not understood");
        }
    }

    void rulesOfTheStyleSheetAreReadable() { checkPair(); }

    void paintedPairIsReadable_data()
    {
        using enum Token;
        addPairColumns();
        addPairs(u"badge"_s, { RiskHighFg }, { RiskHighBg }, Contrast::text);
        addPairs(u"badge"_s, { RiskMediumFg }, { RiskMediumBg }, Contrast::text);
        addPairs(u"badge"_s, { RiskLowFg }, { RiskLowBg }, Contrast::text);
        addPairs(u"badge"_s, { RiskNormalFg }, { RiskNormalBg }, Contrast::text);
        addPairs(u"banner action"_s, { Link }, { InfoBg, WarningBg, DangerBg, SuccessBg },
            Contrast::text);
        addPairs(u"banner icon"_s, { TextSecondary }, { InfoBg, WarningBg, DangerBg, SuccessBg },
            Contrast::graphics);
        addPairs(u"stat card"_s, { TextPrimary, TextSecondary, TextTertiary }, { BgCard, BgHover },
            Contrast::text);
        addPairs(u"stat card edge"_s,
            { RiskHighFg, RiskMediumFg, RiskLowFg, RiskNormalFg, AmountIn, AmountOut, Primary },
            { BgCard, BgPage }, Contrast::graphics);
        addPairs(u"toast"_s, { TextTooltip }, { BgTooltip }, Contrast::text);
        addPairs(u"nav, at rest"_s, { TextSecondary }, { BgNav, BgHover }, Contrast::text);
        addPairs(u"nav, current"_s, { TextPrimary, Link }, { BgSelected }, Contrast::text);
        addPairs(u"empty state"_s, { TextPrimary, TextSecondary, TextTertiary }, { BgCard, BgPage },
            Contrast::text);
        addPairs(
            u"splash"_s, { TextPrimary, TextSecondary, TextTertiary }, { BgCard }, Contrast::text);
        addPairs(u"required star"_s, { DangerText }, { BgCard, BgPage }, Contrast::text);
        addPairs(u"placeholder"_s, { TextTertiary }, { BgInput }, Contrast::text);
        addPairs(u"table cell"_s,
            { TextPrimary, TextSecondary, AmountIn, AmountOut, Link, WarningText, DangerText },
            { BgCard, BgTableAlt, BgSelected }, Contrast::text);
        addPairs(u"list item"_s, { TextPrimary }, { BgCard, BgHover, BgSelected }, Contrast::text);
        addPairs(
            u"calendar"_s, { TextPrimary, TextTertiary, DangerText }, { BgCard }, Contrast::text);
        addPairs(u"switch"_s, { Primary, PrimaryHover, BorderStrong, TextSecondary },
            { BgCard, BgPage }, Contrast::graphics);
        addPairs(u"focus ring"_s, { FocusRing },
            { BgCard, BgPage, BgNav, BgTopBar, BgInput, BgSelected, InfoBg, WarningBg, DangerBg },
            Contrast::graphics);
        addPairs(u"outline of a field"_s, { BorderStrong }, { BgCard, BgPage, BgInput },
            Contrast::graphics);
        addPairs(u"icon"_s, { TextSecondary, TextTertiary, Link, StateOnline },
            { BgCard, BgPage, BgTopBar, BgNav }, Contrast::graphics);
        addPairs(u"arrow of a control"_s, { TextSecondary }, { BgInput, BgTableHeader },
            Contrast::graphics);
        addPairs(u"tick of a control"_s, { TextOnPrimary }, { Primary }, Contrast::graphics);
        // A toast is light in the dark mode and dark in the light one.
        for (const BannerKind kind : allValues<BannerKind>()) {
            for (const ThemeMode mode : allValues<ThemeMode>()) {
                const ThemeMode other
                    = mode == ThemeMode::Light ? ThemeMode::Dark : ThemeMode::Light;
                addCase(rowName(mode, u"toast icon, "_s + codeOf(kind)).constData(),
                    tokenColor(textTokenOf(kind), other), tokenColor(BgTooltip, mode),
                    Contrast::graphics);
            }
        }
    }

    void paintedPairIsReadable() { checkPair(); }

    void controlImagesUseTokensOfTheirMode()
    {
        static const QRegularExpression image(u"url\\((:[^)]+)\\)"_s);
        static const QRegularExpression color(u"#[0-9A-Fa-f]{6}"_s);
        for (const ThemeMode mode : allValues<ThemeMode>()) {
            QSet<QString> palette;
            for (int i = 0; i < tokenCount; ++i)
                palette.insert(tokenColor(static_cast<Token>(i), mode).name());
            int images = 0;
            for (auto matches = image.globalMatch(styleSheetFor(mode)); matches.hasNext();
                 ++images) {
                QFile file(matches.next().captured(1));
                QVERIFY2(file.open(QIODevice::ReadOnly), qUtf8Printable(file.fileName()));
                const QString drawing = QString::fromUtf8(file.readAll());
                const QString used = color.match(drawing).captured().toLower();
                QVERIFY2(palette.contains(used), qUtf8Printable(file.fileName()));
            }
            QVERIFY(images > 10);
        }
    }
};

static const RegisteredTest<TestContrast> registered;

#include "TestContrast.moc"

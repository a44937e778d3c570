#include "core/Codes.h"
#include "support/Hands.h"
#include "support/TestCase.h"
#include "theme/Theme.h"
#include "widgets/ElidedLabel.h"
#include "widgets/EmptyState.h"
#include "widgets/NavButton.h"
#include "widgets/Pictures.h"
#include "widgets/RiskBadge.h"
#include "widgets/RowDelegate.h"
#include "widgets/StatCard.h"
#include "widgets/ViewStyle.h"

#include <QAccessible>
#include <QButtonGroup>
#include <QCalendarWidget>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTableView>
#include <QTextCharFormat>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

class OpenDelegate final : public RowDelegate {
public:
    using RowDelegate::initStyleOption;
};

QImage paintedBadge(RiskLevel level, bool overridden, const QRect& cell)
{
    QImage image(200, 60, QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    RiskBadge::paint(&painter, cell, level, overridden);
    return image;
}

// How dark every pixel is, so that two pictures can be compared without their colours.
QImage shapeOf(const QImage& image)
{
    return image.convertToFormat(QImage::Format_Grayscale8).convertToFormat(QImage::Format_Mono);
}

} // namespace

class TestCards final : public TestCase {
    Q_OBJECT

private slots:
    void onlyACardThatLeadsSomewhereIsAButton_data()
    {
        addColumns<bool, int, QAccessible::Role>("navigable", "clicks", "role");
        addCase("a figure alone", false, 0, QAccessible::StaticText);
        addCase("one that leads to its entries", true, 4, QAccessible::Button);
    }

    void onlyACardThatLeadsSomewhereIsAButton()
    {
        QFETCH(const bool, navigable);
        StatCard card(u"高风险流水"_s);
        card.setNavigable(navigable);
        QVERIFY(Hands::show(card));
        QCOMPARE(card.focusPolicy() != Qt::NoFocus, navigable);
        card.setFocus();
        const QSignalSpy clicked(&card, &StatCard::clicked);
        // Through the window: a card that is no button lets these pass.
        QTest::mouseClick(card.windowHandle(), Qt::LeftButton, {}, card.rect().center());
        QTest::keyClick(card.windowHandle(), Qt::Key_Space);
        QTest::keyClick(card.windowHandle(), Qt::Key_Return);
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&card);
        const QString press = QAccessibleActionInterface::pressAction();
        QCOMPARE(accessible->actionInterface()->actionNames().contains(press), navigable);
        accessible->actionInterface()->doAction(press);
        QTEST(static_cast<int>(clicked.count()), "clicks");
        QTEST(accessible->role(), "role");
    }

    void cardTellsItsFigure()
    {
        StatCard card(u"本月收入"_s);
        card.setValue(u"12,345.00 元"_s);
        card.setFoot(u"对公 12,000.00　私人 345.00"_s);
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&card);
        QCOMPARE(accessible->text(QAccessible::Name), u"本月收入 12,345.00 元"_s);
        QCOMPARE(accessible->text(QAccessible::Description), card.foot());
        QCOMPARE(accessible->text(QAccessible::Value), card.value());
    }

    void longFigureKeepsItsLastDigit()
    {
        StatCard card(u"本月净额"_s);
        card.resize(210, card.sizeHint().height());
        const auto pictureOf = [&card](const QString& value) {
            card.setValue(value);
            return card.grab().toImage();
        };
        QVERIFY(pictureOf(u"-1,234,567,890.12"_s) != pictureOf(u"-1,234,567,890.13"_s));
    }

    void badgesNameLevelAndOverride()
    {
        const auto nameOf = [](RiskLevel level, bool overridden) {
            RiskBadge badge(level, overridden);
            const QString name
                = QAccessible::queryAccessibleInterface(&badge)->text(QAccessible::Name);
            return name == RiskBadge::text(level, overridden) ? name : u"(two texts)"_s;
        };
        QCOMPARE(nameOf(RiskLevel::High, false), u"▲ 高风险"_s);
        QCOMPARE(nameOf(RiskLevel::Medium, true), u"◆ 中风险 *"_s);
        QCOMPARE(nameOf(RiskLevel::Low, false), u"● 预警"_s);
        QCOMPARE(nameOf(RiskLevel::Normal, true), u"✓ 正常 *"_s);
    }

    void badgesDifferWithoutColour()
    {
        const QRect cell(0, 0, 200, 60);
        QList<QImage> shapes;
        for (const RiskLevel level : allValues<RiskLevel>()) {
            // The glyph alone, left of the label.
            const QImage shape = shapeOf(paintedBadge(level, false, cell).copy(0, 18, 20, 24));
            QVERIFY(!shapes.contains(shape));
            shapes.append(shape);
        }
        QVERIFY(paintedBadge(RiskLevel::High, true, cell)
            != paintedBadge(RiskLevel::High, false, cell));
    }

    void badgeStaysInsideItsCell()
    {
        const QRect cell(20, 10, 50, 30);
        QImage image = paintedBadge(RiskLevel::Medium, true, cell);
        QPainter(&image).fillRect(cell, Qt::white);
        QImage blank(image.size(), image.format());
        blank.fill(Qt::white);
        QCOMPARE(image, blank);
    }

    void navButtonShowsTheCurrentPage()
    {
        QWidget bar;
        NavButton ledger(u"ledger"_s, u"资金台账"_s, &bar);
        NavButton reports(u"reports"_s, u"统计报表"_s, &bar);
        QButtonGroup group;
        group.addButton(&ledger);
        group.addButton(&reports);
        ledger.setChecked(true);
        ledger.resize(ledger.sizeHint());
        const QSet<QRgb> current = Pictures::opaqueColors(ledger.grab());
        reports.click();
        QVERIFY(!ledger.isChecked());
        const QSet<QRgb> atRest = Pictures::opaqueColors(ledger.grab());
        for (const Token token : { Token::BgSelected, Token::Link }) {
            QVERIFY(current.contains(Theme::instance().color(token).rgb()));
            QVERIFY(!atRest.contains(Theme::instance().color(token).rgb()));
        }
    }

    void emptyStateShowsLongTextsWhole()
    {
        EmptyState state(
            u"vouchers"_s, u"还没有凭证"_s, u"上传银行回单、合同或发票。"_s.repeated(8));
        state.resize(900, 500);
        state.show();
        for (const auto* label : state.findChildren<QLabel*>()) {
            if (!label->text().isEmpty())
                QVERIFY(label->height() >= label->heightForWidth(label->width()));
        }
    }

    void elidedLabelKeepsItsWholeText()
    {
        ElidedLabel label;
        const QString path = u"数据路径：/一个/很长/的/文件夹/"_s.repeated(5) + u"brixa.db"_s;
        label.setText(path);
        label.resize(200, 20);
        label.show();
        label.grab();
        QCOMPARE(label.text(), path);
        QCOMPARE(label.toolTip(), path);
        QVERIFY(label.minimumSizeHint().width() < 200);
        label.resize(label.sizeHint().width() + 20, 20);
        label.grab();
        QVERIFY2(label.toolTip().isEmpty(), "a text that is shown whole needs no tool tip");
    }

    void selectedRowKeepsAmountColour()
    {
        const QColor income = Theme::instance().color(Token::AmountIn);
        QStandardItemModel model(1, 1);
        model.setData(model.index(0, 0), income, Qt::ForegroundRole);
        QStyleOptionViewItem option;
        OpenDelegate().initStyleOption(&option, model.index(0, 0));
        QCOMPARE(option.palette.color(QPalette::HighlightedText), income);
        QCOMPARE(option.palette.color(QPalette::Text), income);
    }

    void titlesOfRightAlignedColumnsEndWhereTheirCellsEnd()
    {
        QStandardItemModel model(1, 1);
        const QVariant right(Qt::AlignRight | Qt::AlignVCenter);
        model.setHeaderData(0, Qt::Horizontal, u"元"_s);
        model.setHeaderData(0, Qt::Horizontal, right, Qt::TextAlignmentRole);
        model.setData(model.index(0, 0), u"元"_s);
        model.setData(model.index(0, 0), right, Qt::TextAlignmentRole);
        QTableView table;
        ViewStyle::setUpTable(&table, u"表"_s);
        table.setModel(&model);
        table.setColumnWidth(0, 120);
        table.resize(300, 200);
        table.ensurePolished();
        // The line at the end of a section is not part of its title.
        const auto endOfText = [](QWidget* area, int y) {
            const QImage picture = area->grab({ 0, y, 116, 30 }).toImage();
            for (int x = picture.width() - 1; x > 0; --x) {
                for (int line = 0; line < picture.height(); ++line) {
                    if (picture.pixel(x, line) != picture.pixel(2, 2))
                        return x;
                }
            }
            return 0;
        };
        const int end = endOfText(table.viewport(), 3);
        QVERIFY(end > 80);
        QVERIFY(std::abs(endOfText(table.horizontalHeader()->viewport(), 3) - end) <= 1);
    }

    void theCalendarsWeekendFollowsTheTheme()
    {
        QCalendarWidget calendar;
        ViewStyle::setUpCalendar(&calendar);
        const auto weekend
            = [&calendar] { return calendar.weekdayTextFormat(Qt::Sunday).foreground().color(); };
        QCOMPARE(weekend(), tokenColor(Token::DangerText, ThemeMode::Light));
        Theme::instance().apply(ThemeMode::Dark);
        QCOMPARE(weekend(), tokenColor(Token::DangerText, ThemeMode::Dark));
        Theme::instance().apply(ThemeMode::Light);
    }
};

static const RegisteredTest<TestCards> registered;

#include "TestCards.moc"

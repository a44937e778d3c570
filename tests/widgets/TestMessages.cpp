#include "widgets/TestMessages.h"

#include "support/ModalAnswerer.h"
#include "theme/Theme.h"
#include "widgets/Banner.h"
#include "widgets/MessageBox.h"
#include "widgets/Pictures.h"
#include "widgets/SplashScreen.h"
#include "widgets/Toast.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

class PaintCounter final : public QObject {
public:
    int count = 0;

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            ++count;
        return false;
    }
};

QStringList toastTexts(const QWidget& window)
{
    QStringList texts;
    for (const Toast* toast : window.findChildren<Toast*>()) {
        if (toast->isVisible())
            texts.append(toast->text());
    }
    return texts;
}

Toast* toastOf(const QWidget& window, const QString& text)
{
    for (Toast* toast : window.findChildren<Toast*>()) {
        if (toast->isVisible() && toast->text() == text)
            return toast;
    }
    return nullptr;
}

// Longer than a toast that nobody touches stands.
constexpr int toastPatienceMs = 2 * Toast::shownMs;

} // namespace

void TestMessages::bannerShowsTextAsTyped()
{
    Banner banner(BannerKind::Warning);
    banner.setText(u"项目 <b>甲</b> 已归档"_s);
    auto* label = banner.findChild<QLabel*>(u"BannerText"_s);
    QCOMPARE(label->textFormat(), Qt::PlainText);
    QVERIFY(label->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
    QVERIFY(label->wordWrap());
    QCOMPARE(banner.accessibleName(), u"注意：项目 <b>甲</b> 已归档"_s);
    banner.setKind(BannerKind::Danger);
    QCOMPARE(banner.accessibleName(), u"重要：项目 <b>甲</b> 已归档"_s);
}

void TestMessages::bannerActionAndCloseReport()
{
    Banner banner(BannerKind::Info);
    banner.setText(u"公司档案不完整。"_s);
    auto* action = banner.findChild<QPushButton*>(u"BannerAction"_s);
    auto* close = banner.findChild<QToolButton*>(u"BannerClose"_s);
    QVERIFY(action->isHidden());
    QVERIFY(close->isHidden());
    banner.setAction(u"去完善"_s);
    banner.setClosable(true);
    banner.show();
    QSignalSpy triggered(&banner, &Banner::actionTriggered);
    QSignalSpy closed(&banner, &Banner::closed);
    action->click();
    QCOMPARE(triggered.count(), 1);
    QCOMPARE(close->accessibleName(), u"关闭提示"_s);
    close->click();
    QCOMPARE(closed.count(), 1);
    QVERIFY(banner.isHidden());
}

void TestMessages::bannerKindsLookDifferent()
{
    Banner banner(BannerKind::Info);
    banner.setText(u"文书已生成。"_s);
    banner.resize(300, 42);
    const auto shows = [&banner](Token token) {
        return Pictures::opaqueColors(banner.grab()).contains(Theme::instance().color(token).rgb());
    };
    QVERIFY(shows(Token::InfoBg) && shows(Token::InfoText) && shows(Token::InfoBorder));
    banner.setKind(BannerKind::Success);
    QVERIFY(shows(Token::SuccessBg) && shows(Token::SuccessText) && shows(Token::SuccessBorder));
    QVERIFY(!shows(Token::InfoBg) && !shows(Token::InfoText));
}

void TestMessages::toastNeverTakesTheKeyboard()
{
    QWidget window;
    window.resize(800, 600);
    QLineEdit field(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    field.setFocus();
    Toast::show(&field, u"流水已保存"_s);
    QVERIFY(field.hasFocus());
    QCOMPARE(toastTexts(window), QStringList { u"流水已保存"_s });
    const Toast* toast = toastOf(window, u"流水已保存"_s);
    QCOMPARE(toast->focusPolicy(), Qt::NoFocus);
    QCOMPARE(toast->accessibleName(), u"完成：流水已保存"_s);
    QVERIFY(std::abs(toast->geometry().center().x() - window.rect().center().x()) <= 1);
    QVERIFY(toast->y() > window.height() / 2);
}

void TestMessages::toastGoesByItself()
{
    QWidget window;
    window.resize(800, 600);
    window.show();
    QElapsedTimer timer;
    timer.start();
    Toast::show(&window, u"流水已保存"_s);
    QTRY_VERIFY_WITH_TIMEOUT(toastTexts(window).isEmpty(), toastPatienceMs);
    QVERIFY(timer.elapsed() >= Toast::shownMs - 100);
    QTRY_VERIFY(window.findChildren<Toast*>().isEmpty());
}

void TestMessages::toastWaitsUnderThePointer()
{
    QWidget window;
    window.resize(800, 600);
    window.show();
    Toast::show(&window, u"正在阅读"_s);
    Toast::show(&window, u"无人理会"_s);
    Toast* read = toastOf(window, u"正在阅读"_s);
    QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
    QApplication::sendEvent(read, &enter);
    QTRY_COMPARE_WITH_TIMEOUT(toastTexts(window), QStringList { u"正在阅读"_s }, toastPatienceMs);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(read, &leave);
    QVERIFY(read->isVisible());
    QTRY_VERIFY_WITH_TIMEOUT(toastTexts(window).isEmpty(), toastPatienceMs);
}

void TestMessages::onlyThreeToastsStand()
{
    QWidget window;
    window.resize(800, 600);
    window.show();
    for (const QString& text : { u"一"_s, u"二"_s, u"三"_s, u"四"_s })
        Toast::show(&window, text);
    QCOMPARE(toastTexts(window), (QStringList { u"二"_s, u"三"_s, u"四"_s }));
    const QRect oldest = toastOf(window, u"二"_s)->geometry();
    const QRect middle = toastOf(window, u"三"_s)->geometry();
    const QRect newest = toastOf(window, u"四"_s)->geometry();
    QVERIFY(oldest.bottom() < middle.top());
    QVERIFY(middle.bottom() < newest.top());
    QVERIFY(newest.bottom() < window.height());
}

void TestMessages::toastsFollowTheWindow()
{
    QWidget window;
    window.resize(800, 600);
    window.show();
    Toast::show(&window, u"流水已保存"_s);
    const QRect before = toastOf(window, u"流水已保存"_s)->geometry();
    window.resize(1000, 700);
    QTRY_COMPARE(toastOf(window, u"流水已保存"_s)->geometry(), before.translated(100, 100));
}

void TestMessages::splashPaintsAtOnce()
{
    SplashScreen splash;
    PaintCounter painted;
    splash.installEventFilter(&painted);
    splash.start();
    QVERIFY(splash.isVisible());
    QVERIFY(painted.count > 0);
    QVERIFY(Pictures::opaqueColors(splash.grab()).size() > 10);
}

void TestMessages::splashFinishesOnce_data()
{
    QTest::addColumn<QString>("how");
    for (const QString& how : { u"time"_s, u"click"_s, u"close"_s, u"key"_s })
        QTest::newRow(qUtf8Printable(how)) << how;
}

void TestMessages::splashFinishesOnce()
{
    QFETCH(QString, how);
    SplashScreen splash;
    QSignalSpy finished(&splash, &SplashScreen::finished);
    QElapsedTimer timer;
    timer.start();
    splash.start();
    if (how == u"click")
        QTest::mouseClick(&splash, Qt::LeftButton);
    else if (how == u"close")
        splash.close();
    else if (how == u"key")
        QTest::keyClick(&splash, Qt::Key_Escape);
    QCOMPARE(finished.count(), how == u"time" ? 0 : 1);
    QTRY_VERIFY(timer.elapsed() > SplashScreen::shownMs && finished.count() > 0);
    QVERIFY(splash.isHidden());
    QTest::mouseClick(&splash, Qt::LeftButton);
    splash.close();
    QCOMPARE(finished.count(), 1);
}

void TestMessages::boxShowsTitleAndTextAsTyped_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("information") << 0;
    QTest::newRow("warning") << 1;
    QTest::newRow("failure") << 2;
}

void TestMessages::boxShowsTitleAndTextAsTyped()
{
    QFETCH(int, kind);
    static constexpr auto boxes
        = std::to_array({ &MessageBox::info, &MessageBox::warn, &MessageBox::critical });
    ModalAnswerer answerer;
    answerer.expectButton(u"确定"_s);
    boxes[static_cast<std::size_t>(kind)](nullptr, u"信息不完整"_s, u"请填写 <b>公司名称</b>。"_s);
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().first().title, u"信息不完整"_s);
    QCOMPARE(answerer.seen().first().text, u"请填写 <b>公司名称</b>。"_s);
    QCOMPARE(answerer.seen().first().buttons, QStringList { u"确定"_s });
}

void TestMessages::questionIsAnsweredByItsButton()
{
    ModalAnswerer answerer;
    answerer.expectButton(u"继续保存"_s);
    QVERIFY(MessageBox::ask(nullptr, u"提示"_s, u"继续吗？"_s, u"继续保存"_s, u"返回修改"_s));
    answerer.expectButton(u"返回修改"_s);
    QVERIFY(!MessageBox::ask(nullptr, u"提示"_s, u"继续吗？"_s, u"继续保存"_s, u"返回修改"_s));
    const QStringList both { u"继续保存"_s, u"返回修改"_s };
    QCOMPARE(answerer.seen().at(1).buttons, both);
}

void TestMessages::escapeAndCloseReject_data()
{
    QTest::addColumn<ButtonRole>("role");
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("plain question, Escape") << ButtonRole::Primary << true;
    QTest::newRow("plain question, closed") << ButtonRole::Primary << false;
    QTest::newRow("destructive question, Escape") << ButtonRole::Danger << true;
    QTest::newRow("destructive question, closed") << ButtonRole::Danger << false;
}

void TestMessages::escapeAndCloseReject()
{
    QFETCH(ButtonRole, role);
    QFETCH(bool, byEscape);
    ModalAnswerer answerer;
    answerer.expect([byEscape](QDialog* box) {
        if (byEscape)
            QTest::keyClick(box, Qt::Key_Escape);
        else
            box->close();
    });
    QVERIFY(
        !MessageBox::ask(nullptr, u"删除流水"_s, u"确定删除吗？"_s, u"删除"_s, u"取消"_s, role));
}

void TestMessages::enterPressesTheDefaultButton_data()
{
    QTest::addColumn<ButtonRole>("role");
    QTest::addColumn<QString>("defaultText");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("plain question accepts") << ButtonRole::Primary << u"继续"_s << true;
    QTest::newRow("destructive question keeps") << ButtonRole::Danger << u"取消"_s << false;
}

void TestMessages::enterPressesTheDefaultButton()
{
    QFETCH(ButtonRole, role);
    QString defaultText;
    ModalAnswerer answerer;
    answerer.expect([&defaultText](QDialog* box) {
        for (const auto* button : box->findChildren<QPushButton*>()) {
            if (button->isDefault() && button->hasFocus())
                defaultText = button->text();
        }
        QTest::keyClick(box, Qt::Key_Return);
    });
    const bool accepted
        = MessageBox::ask(nullptr, u"提示"_s, u"继续吗？"_s, u"继续"_s, u"取消"_s, role);
    QTEST(accepted, "accepted");
    QTEST(defaultText, "defaultText");
}

void TestMessages::longTextWrapsInsideTheBox()
{
    const QString text = u"删除后编号可能被再次使用，已签字的文书请勿删除。"_s.repeated(12);
    ModalAnswerer answerer;
    QSize box;
    QSize needed;
    answerer.expect([&](QDialog* dialog) {
        const auto* label = dialog->findChild<QLabel*>(u"MessageText"_s);
        box = dialog->size();
        needed = { label->width(), label->heightForWidth(label->width()) - label->height() };
        ModalAnswerer::buttonOf(dialog, u"确定"_s)->click();
    });
    MessageBox::info(nullptr, u"提示"_s, text);
    QVERIFY(box.width() < 600);
    QVERIFY2(needed.height() <= 0, "the text is higher than its label");
}

void TestMessages::missingBoxFailsTheTest()
{
    QEXPECT_FAIL("", "an announced box that never opens is a failure", Continue);
    {
        ModalAnswerer answerer;
        answerer.expectButton(u"确定"_s);
    }
}

void TestMessages::unannouncedBoxFailsTheTest()
{
    ModalAnswerer answerer;
    QEXPECT_FAIL("", "a box that nobody announced is a failure", Continue);
    QVERIFY(!MessageBox::ask(nullptr, u"提示"_s, u"继续吗？"_s, u"继续"_s));
    QCOMPARE(answerer.seen().size(), 1);
}

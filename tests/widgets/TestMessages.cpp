#include "support/Hands.h"
#include "support/ModalAnswerer.h"
#include "support/TestCase.h"
#include "theme/Theme.h"
#include "widgets/Banner.h"
#include "widgets/MessageBox.h"
#include "widgets/Pictures.h"
#include "widgets/SaveFileDialog.h"
#include "widgets/SplashScreen.h"
#include "widgets/StartFolder.h"
#include "widgets/Toast.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QToolButton>

#include <memory>

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

bool asks(ButtonRole role)
{
    return MessageBox::ask(nullptr, u"提示"_s, u"继续吗？"_s, u"继续"_s, u"取消"_s, role);
}

QWidget* roomForToasts()
{
    auto* window = new QWidget;
    window->resize(800, 600);
    window->show();
    return window;
}

// Longer than a toast that nobody touches stands.
constexpr int toastPatienceMs = 2 * Toast::shownMs;

} // namespace

class TestMessages final : public TestCase {
    Q_OBJECT

private slots:
    void bannerShowsTextAsTyped()
    {
        Banner banner(BannerKind::Warning);
        banner.setText(u"项目 \u202e<b>甲</b> 已归档"_s);
        auto* label = banner.findChild<QLabel*>(u"BannerText"_s);
        QCOMPARE(label->textFormat(), Qt::PlainText);
        QVERIFY(label->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
        QVERIFY(label->wordWrap());
        QCOMPARE(banner.accessibleName(), u"注意：项目 <b>甲</b> 已归档"_s);
        banner.setKind(BannerKind::Danger);
        QCOMPARE(banner.accessibleName(), u"重要：项目 <b>甲</b> 已归档"_s);
    }

    void bannerGoesByItsCloseButton()
    {
        Banner banner(BannerKind::Info);
        auto* close = banner.findChild<QToolButton*>(u"BannerClose"_s);
        QVERIFY(close->isHidden());
        banner.setClosable(true);
        banner.show();
        const QSignalSpy closed(&banner, &Banner::closed);
        QCOMPARE(close->accessibleName(), u"关闭提示"_s);
        close->click();
        QCOMPARE(closed.count(), 1);
        QVERIFY(banner.isHidden());
    }

    void bannerKindsLookDifferent()
    {
        Banner banner(BannerKind::Info);
        banner.setText(u"文书已生成。"_s);
        banner.resize(300, 42);
        const auto shows = [&banner](Token token) {
            return Pictures::opaqueColors(banner.grab())
                .contains(Theme::instance().color(token).rgb());
        };
        using enum Token;
        QVERIFY(shows(InfoBg) && shows(InfoText) && shows(InfoBorder));
        banner.setKind(BannerKind::Success);
        QVERIFY(shows(SuccessBg) && shows(SuccessText) && shows(SuccessBorder));
        QVERIFY(!shows(InfoBg) && !shows(InfoText));
    }

    void toastFollowsTheWindowAndNeverTakesTheKeyboard()
    {
        QWidget window;
        window.resize(800, 600);
        QLineEdit field(&window);
        QVERIFY(Hands::show(window));
        field.setFocus();
        Toast::show(&field, u"流水\u202e已保存"_s);
        QVERIFY(field.hasFocus());
        QCOMPARE(toastTexts(window), QStringList { u"流水已保存"_s });
        const Toast* toast = toastOf(window, u"流水已保存"_s);
        QCOMPARE(toast->focusPolicy(), Qt::NoFocus);
        QCOMPARE(toast->accessibleName(), u"完成：流水已保存"_s);
        QVERIFY(std::abs(toast->geometry().center().x() - window.rect().center().x()) <= 1);
        QVERIFY(toast->y() > window.height() / 2);
        const QRect before = toast->geometry();
        window.resize(1000, 700);
        QTRY_COMPARE(toast->geometry(), before.translated(100, 100));
    }

    void toastGoesByItselfUnlessThePointerIsOnIt()
    {
        const std::unique_ptr<QWidget> window(roomForToasts());
        QElapsedTimer timer;
        timer.start();
        Toast::show(window.get(), u"正在阅读"_s);
        Toast::show(window.get(), u"无人理会"_s);
        Toast* read = toastOf(*window, u"正在阅读"_s);
        QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
        QApplication::sendEvent(read, &enter);
        QTRY_COMPARE_WITH_TIMEOUT(
            toastTexts(*window), QStringList { u"正在阅读"_s }, toastPatienceMs);
        QVERIFY(timer.elapsed() >= Toast::shownMs - 100);
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(read, &leave);
        QVERIFY(read->isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(window->findChildren<Toast*>().isEmpty(), toastPatienceMs);
    }

    void onlyThreeToastsStand()
    {
        const std::unique_ptr<QWidget> window(roomForToasts());
        for (const QString& text : { u"一"_s, u"二"_s, u"三"_s, u"四"_s })
            Toast::show(window.get(), text);
        QCOMPARE(toastTexts(*window), (QStringList { u"二"_s, u"三"_s, u"四"_s }));
        const QRect oldest = toastOf(*window, u"二"_s)->geometry();
        const QRect middle = toastOf(*window, u"三"_s)->geometry();
        const QRect newest = toastOf(*window, u"四"_s)->geometry();
        QVERIFY(oldest.bottom() < middle.top());
        QVERIFY(middle.bottom() < newest.top());
        QVERIFY(newest.bottom() < window->height());
    }

    void splashPaintsAtOnce()
    {
        SplashScreen splash;
        PaintCounter painted;
        splash.installEventFilter(&painted);
        splash.start();
        QVERIFY(splash.isVisible());
        QVERIFY(painted.count > 0);
        QVERIFY(Pictures::opaqueColors(splash.grab()).size() > 10);
    }

    void splashFinishesOnce_data()
    {
        QTest::addColumn<QString>("how");
        for (const QString& how : { u"time"_s, u"click"_s, u"close"_s, u"key"_s })
            addCase(qUtf8Printable(how), how);
    }

    void splashFinishesOnce()
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

    void boxShowsTitleAndTextAsTyped()
    {
        for (const auto box : { &MessageBox::info, &MessageBox::warn, &MessageBox::critical }) {
            ModalAnswerer answerer(u"确定"_s);
            box(nullptr, u"信息不完整"_s, u"请填写 <b>公司\u202e名称</b>。"_s);
            QCOMPARE(answerer.seen().size(), 1);
            QCOMPARE(answerer.seen().first().title, u"信息不完整"_s);
            QCOMPARE(answerer.seen().first().text, u"请填写 <b>公司名称</b>。"_s);
            QCOMPARE(answerer.seen().first().buttons, QStringList { u"确定"_s });
        }
    }

    void enterKeepsOnlyWhatWouldBeDestroyedEscapeAndCloseKeepAll()
    {
        for (const ButtonRole role : { ButtonRole::Primary, ButtonRole::Danger }) {
            const bool harmless = role == ButtonRole::Primary;
            QString defaultText;
            ModalAnswerer answerer([&defaultText](QDialog* box) {
                for (const auto* button : box->findChildren<QPushButton*>()) {
                    if (button->isDefault() && button->hasFocus())
                        defaultText = button->text();
                }
                QTest::keyClick(box, Qt::Key_Return);
            });
            QCOMPARE(asks(role), harmless);
            QCOMPARE(defaultText, harmless ? u"继续"_s : u"取消"_s);
            answerer.expect([](QDialog* box) { QTest::keyClick(box, Qt::Key_Escape); });
            QVERIFY(!asks(role));
            answerer.expect([](QDialog* box) { box->close(); });
            QVERIFY(!asks(role));
        }
    }

    void enterPressesTheButtonThatHasTheFocus()
    {
        for (const ButtonRole role : { ButtonRole::Primary, ButtonRole::Danger }) {
            const bool other = role == ButtonRole::Danger;
            ModalAnswerer answerer([](QDialog* box) {
                QTest::keyClick(box->focusWidget(), Qt::Key_Tab);
                QTest::keyClick(box->focusWidget(), Qt::Key_Return);
            });
            QCOMPARE(asks(role), other);
        }
    }

    void longTextWrapsInsideTheBox()
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

    void aFileDialogStartsInAFolderThatIsThere()
    {
        const QTemporaryDir home;
        const QByteArray before = qgetenv("HOME");
        const auto restored = qScopeGuard([&before] { qputenv("HOME", before); });
        qputenv("HOME", home.path().toUtf8());
        QString start;
        QString name;
        ModalAnswerer answerer([&](QDialog* dialog) {
            start = qobject_cast<QFileDialog*>(dialog)->directory().path();
            name = dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->text();
            dialog->reject();
        });
        QVERIFY(SaveFileDialog::ask(nullptr, u"导出"_s, u"*.csv"_s, u"台账.csv"_s).isEmpty());
        QCOMPARE(start, home.path());
        QCOMPARE(name, u"台账.csv"_s);
        QVERIFY(QDir(home.path()).mkdir(u"Documents"_s));
        QCOMPARE(StartFolder::lastOrDocuments({}), home.filePath(u"Documents"_s));
        QCOMPARE(StartFolder::firstOf({ QString(), home.filePath(u"gone"_s) }), home.path());
    }

    void unannouncedBoxFailsTheTest()
    {
        ModalAnswerer answerer;
        QEXPECT_FAIL("", "a box that nobody announced is a failure", Continue);
        QVERIFY(!MessageBox::ask(nullptr, u"提示"_s, u"继续吗？"_s, u"继续"_s));
        QCOMPARE(answerer.seen().size(), 1);
    }
};

static const RegisteredTest<TestMessages> registered;

#include "TestMessages.moc"

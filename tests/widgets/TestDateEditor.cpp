#include "support/InputMethod.h"
#include "support/TestCase.h"
#include "widgets/BusyNotice.h"
#include "widgets/DateEditor.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

struct Form {
    QWidget window;
    DateEditor* field;
    QLineEdit* next = new QLineEdit;

    explicit Form(DateEditor::Empty empty)
        : field(new DateEditor(empty))
    {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(field);
        column->addWidget(next);
        window.show();
    }

    bool start()
    {
        field->setFocus();
        return QTest::qWaitForWindowActive(&window) && field->hasFocus();
    }

    bool isMarked() const { return field->property("wrong").toString() == u"true"; }
};

} // namespace

class TestDateEditor final : public TestCase {
    Q_OBJECT

private slots:
    void followsTheCalendarUntilItIsTouched()
    {
        const QDate past(2025, 2, 3);
        DateEditor atMidnight;
        DateEditor comingIntoView;
        DateEditor touched;
        for (DateEditor* field : { &atMidnight, &comingIntoView, &touched })
            field->setToday(past);
        touched.setText(u"2025-02-04"_s);
        for (const DateEditor* field : { &atMidnight, &touched })
            field->findChild<QTimer*>()->setInterval(0);
        QTRY_COMPARE(atMidnight.date(), QDate::currentDate());
        QCOMPARE(comingIntoView.date(), past);
        for (DateEditor* field : { &comingIntoView, &touched })
            field->show();
        QCOMPARE(comingIntoView.date(), QDate::currentDate());
        QCOMPARE(touched.date(), QDate(2025, 2, 4));
    }

    void understandsWhatIsTyped_data()
    {
        addColumns<QString, QString>("typed", "shown");
        addCase("the stored form", u"2025-02-03"_s, u"2025-02-03"_s);
        addCase("without separators", u"20250203"_s, u"2025-02-03"_s);
        addCase("with slashes", u"2025/2/3"_s, u"2025-02-03"_s);
        addCase("with dots and blanks", u" 2025.2.3 "_s, u"2025-02-03"_s);
        addCase("by a Chinese input method", u"２０２５。２。３"_s, u"2025-02-03"_s);
        addCase("a leap day", u"2024-2-29"_s, u"2024-02-29"_s);
        addCase("no leap day", u"2025-02-29"_s, QString());
        addCase("separators that differ", u"2025-2/3"_s, QString());
        addCase("two digits of the year", u"25-02-03"_s, QString());
        addCase("before any company", u"1899-12-31"_s, QString());
        addCase("seven digits", u"2025023"_s, QString());
        addCase("words", u"昨天"_s, QString());
    }
    void understandsWhatIsTyped()
    {
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        Form form(DateEditor::Empty::Allowed);
        QVERIFY(form.start());
        form.field->setDate(QDate(2026, 1, 1));
        form.field->selectAll();
        InputMethod::commit(typed);
        QTest::keyClick(form.field, Qt::Key_Tab);
        QCOMPARE(form.field->date(), QDate::fromString(shown, Qt::ISODate));
        QCOMPARE(form.field->text(), shown.isEmpty() ? typed : shown);
        QCOMPARE(form.isMarked(), shown.isEmpty());
        QCOMPARE(form.field->isAcceptable(), !shown.isEmpty());
    }

    void isEmptyOnlyWhereThatIsAllowed()
    {
        for (const auto empty : { DateEditor::Empty::Allowed, DateEditor::Empty::Forbidden }) {
            Form form(empty);
            QVERIFY(form.start());
            form.field->setDate(QDate(2026, 1, 1));
            form.field->clear();
            form.next->setFocus();
            QCOMPARE(form.field->isAcceptable(), empty == DateEditor::Empty::Allowed);
            QCOMPARE(form.isMarked(), empty == DateEditor::Empty::Forbidden);
        }
    }

    void tellsEveryChangeOnce()
    {
        Form form(DateEditor::Empty::Allowed);
        QVERIFY(form.start());
        QSignalSpy changes(form.field, &DateEditor::dateChanged);
        QTest::keyClicks(form.field, u"20250203"_s);
        form.next->setFocus();
        QCOMPARE(changes.size(), 1);
        QCOMPARE(changes.first().first().toDate(), QDate(2025, 2, 3));
        form.field->setDate({});
        QCOMPARE(changes.size(), 2);
    }

    void calendarGivesItsDayByKeyboard()
    {
        Form form(DateEditor::Empty::Allowed);
        QVERIFY(form.start());
        form.field->setDate(QDate(2025, 2, 3));
        QTest::keyClick(form.field, Qt::Key_F4);
        QWidget* popup = QApplication::activePopupWidget();
        QVERIFY(popup);
        auto* days = popup->findChild<QWidget*>(u"qt_calendar_calendarview"_s);
        QTest::keyClick(days, Qt::Key_Right);
        QTest::keyClick(days, Qt::Key_Return);
        QTRY_VERIFY(!QApplication::activePopupWidget());
        QCOMPARE(form.field->date(), QDate(2025, 2, 4));
    }

    void busyNoticeStopsOnlyWhereThatIsAllowed()
    {
        for (const auto cancel : { BusyNotice::Cancel::No, BusyNotice::Cancel::Allowed }) {
            BusyNotice notice(nullptr, u"正在入库…"_s, cancel);
            QVERIFY(notice.isVisible());
            QTest::keyClick(&notice, Qt::Key_Escape);
            QCOMPARE(notice.isCancelled(), cancel == BusyNotice::Cancel::Allowed);
            notice.setProgress(1, 2);
            QVERIFY(notice.isVisible());
        }
    }
};

static const RegisteredTest<TestDateEditor> registered;

#include "TestDateEditor.moc"

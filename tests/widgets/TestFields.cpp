#include "support/InputMethod.h"
#include "support/TestCase.h"
#include "widgets/AmountField.h"
#include "widgets/FormRows.h"
#include "widgets/WheelGuard.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSpinBox>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

QString nameOf(QWidget* widget)
{
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
}

void turnWheel(QWidget* widget)
{
    const QPointF centre = widget->rect().center();
    QWheelEvent event(centre, widget->mapToGlobal(centre), QPoint(), QPoint(0, -120), Qt::NoButton,
        Qt::NoModifier, Qt::NoScrollPhase, false);
    event.setAccepted(false);
    // Only what comes from the system is passed on to the parents.
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(widget, &event);
}

QComboBox* makeCombo(QWidget* parent)
{
    auto* combo = new QComboBox(parent);
    combo->addItems({ u"分类 1"_s, u"分类 2"_s, u"分类 3"_s });
    return combo;
}

// A window whose first field has the keyboard.
struct Form {
    QWidget window;
    QVBoxLayout column { &window };
    QLineEdit* first = new QLineEdit(&window);

    void add(QWidget* field) { column.addWidget(field); }

    bool show()
    {
        column.insertWidget(0, first);
        window.show();
        first->setFocus();
        return QTest::qWaitForWindowActive(&window) && first->hasFocus();
    }
};

struct AmountForm : Form {
    AmountField* field = new AmountField(&window);

    // The keyboard arrives with the whole figure selected.
    bool enterField()
    {
        add(field);
        const bool shown = show();
        field->setFocus();
        const auto* line = field->findChild<QLineEdit*>();
        return shown && QTest::qWaitFor([line] { return line->selectedText() == u"0.00"_s; });
    }
};

} // namespace

class TestFields final : public TestCase {
    Q_OBJECT

private slots:
    void everyRowNamesItsField()
    {
        QWidget window;
        auto* rows = new FormRows(&window);
        auto* editable = makeCombo(nullptr);
        editable->setEditable(true);
        auto* combo = makeCombo(nullptr);
        for (QWidget* field : std::initializer_list<QWidget*> {
                 new QLineEdit, new QPlainTextEdit, new AmountField, editable, combo }) {
            const FormRow row = rows->addRow(u"金额"_s, field, Required::Yes);
            QCOMPARE(row.label->buddy(), field);
            QCOMPARE(nameOf(row.label), u"金额"_s);
            QCOMPARE(field->accessibleName(), u"金额"_s);
            if (field == editable)
                QCOMPARE(nameOf(editable->lineEdit()), u"金额"_s);
            else if (field != combo)
                QCOMPARE(nameOf(field), u"金额"_s);
        }
        auto* wrapper = new QWidget;
        auto* field = new QLineEdit(wrapper);
        QCOMPARE(rows->addWrappedRow(u"备份位置"_s, wrapper, field).label->buddy(), field);
        QCOMPARE(nameOf(field), u"备份位置"_s);
        QVERIFY(wrapper->accessibleName().isEmpty());
    }

    void aLabelIsShownAsTypedAndCarriesAStarWhenRequired()
    {
        const FieldLabel label(u"<b>甲</b>&乙"_s, Required::Yes);
        QVERIFY(label.text().endsWith(u"*</span> &lt;b&gt;甲&lt;/b&gt;&amp;乙"_s));
        QCOMPARE(label.accessibleName(), u"<b>甲</b>&乙"_s);
        QCOMPARE(FieldLabel(u"对方名称"_s, Required::No).text(), u"对方名称"_s);
    }

    void hintStandsBelowTheField()
    {
        QWidget window;
        auto* rows = new FormRows(&window);
        auto* field = new QLineEdit;
        const FormRow row
            = rows->addRow(u"公司名称"_s, field, Required::Yes, u"与营业执照一致。"_s);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(row.hint->text(), u"与营业执照一致。"_s);
        QCOMPARE(field->accessibleDescription(), row.hint->text());
        const auto topOf = [&window](QWidget* w) { return w->mapTo(&window, QPoint()).y(); };
        QVERIFY(topOf(row.hint) >= topOf(field) + field->height());
        // The label stands beside the field, not beside the middle of field and hint.
        QCOMPARE(topOf(row.label), topOf(field));
        QCOMPARE(row.label->height(), field->height());
    }

    void amountIsUnderstoodAsTyped_data()
    {
        addColumns<QString, qint64, QString>("typed", "fen", "shown");
        addCase("zero", u"0"_s, 0LL, u"0.00 元"_s);
        addCase("one fen", u"0.01"_s, 1LL, u"0.01 元"_s);
        addCase("binary fraction", u"0.29"_s, 29LL, u"0.29 元"_s);
        addCase("plain", u"1234.5"_s, 123'450LL, u"1234.50 元"_s);
        addCase("with grouping commas", u"12,345.60"_s, 1'234'560LL, u"12345.60 元"_s);
        addCase("full-width digits", u"１２３．４５"_s, 12'345LL, u"123.45 元"_s);
        addCase("Chinese full stop as the point", u"88。8"_s, 8'880LL, u"88.80 元"_s);
        addCase("sign and blanks", u"￥ 1，000"_s, 100'000LL, u"1000.00 元"_s);
        addCase("with its unit", u"56.78 元"_s, 5'678LL, u"56.78 元"_s);
        addCase("largest entry", u"99999999.99"_s, 9'999'999'999LL, u"99999999.99 元"_s);
        addCase(
            "beyond what may be stored", u"100000000"_s, 10'000'000'000LL, u"100000000.00 元"_s);
    }

    void amountIsUnderstoodAsTyped()
    {
        QFETCH(QString, typed);
        QFETCH(qint64, fen);
        AmountForm form;
        QVERIFY(form.enterField());
        QSignalSpy changed(form.field, &AmountField::valueChanged);
        InputMethod::commit(typed);
        QCOMPARE(form.field->amountFen(), fen);
        QCOMPARE(changed.isEmpty(), fen == 0);
        form.field->setAmountFen(1);
        form.field->setAmountFen(fen);
        QCOMPARE(form.field->amountFen(), fen);
        QTEST(form.field->text(), "shown");
    }

    void anEmptiedAmountIsZero()
    {
        AmountForm form;
        QVERIFY(form.enterField());
        form.field->setAmountFen(5'000);
        form.field->selectAll();
        QTest::keyClick(form.field, Qt::Key_Delete);
        QCOMPARE(form.field->amountFen(), 0LL);
        QTest::keyClick(form.field, Qt::Key_Return);
        QCOMPARE(form.field->text(), u"0.00 元"_s);
        QCOMPARE(form.field->amountFen(), 0LL);
    }

    void focusSelectsTheAmount()
    {
        Form form;
        auto* field = new AmountField(&form.window);
        form.add(field);
        field->setAmountFen(5'000'000);
        QVERIFY(form.show());
        auto* line = field->findChild<QLineEdit*>();
        QTest::mouseClick(line, Qt::LeftButton);
        QTRY_COMPARE(line->selectedText(), u"50000.00"_s);
        QTest::keyClicks(field, u"7.239"_s);
        QVERIFY2(field->amountFen() == 723LL, "a third decimal is not taken");
    }

    void wheelChangesAFieldWithTheKeyboardOnly()
    {
        WheelGuard::protectApplication();
        Form form;
        auto* area = new QScrollArea(&form.window);
        auto* content = new QWidget;
        auto* column = new QVBoxLayout(content);
        auto* combo = makeCombo(content);
        auto* spin = new QSpinBox(content);
        auto* amount = new AmountField(content);
        spin->setValue(5);
        for (QWidget* field : std::initializer_list<QWidget*> { combo, spin, amount })
            column->addWidget(field);
        column->addSpacing(2000);
        area->setWidget(content);
        form.add(area);
        QVERIFY(form.show());
        for (QWidget* field : std::initializer_list<QWidget*> { combo, spin, amount }) {
            const int before = area->verticalScrollBar()->value();
            turnWheel(field);
            QVERIFY2(area->verticalScrollBar()->value() > before, "the page goes on scrolling");
        }
        QCOMPARE(combo->currentIndex(), 0);
        QCOMPARE(spin->value(), 5);
        QCOMPARE(amount->amountFen(), 0LL);
        QVERIFY(form.first->hasFocus());
        combo->setFocus();
        turnWheel(combo);
        QCOMPARE(combo->currentIndex(), 1);
    }
};

static const RegisteredTest<TestFields> registered;

#include "TestFields.moc"

#include "PageUnderTest.h"

#include "pages/documents/DocumentPreview.h"
#include "support/TestLedger.h"

#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

template <typename Widget, typename Fits> Widget* visibleOne(QWidget& page, const Fits& fits)
{
    for (Widget* widget : page.findChildren<Widget*>()) {
        if (widget->isVisible() && fits(widget))
            return widget;
    }
    return nullptr;
}

} // namespace

PageUnderTest::PageUnderTest()
{
    page.resize(1200, 800);
    page.refresh();
    page.show();
    page.activateWindow();
    if (!QTest::qWaitForWindowActive(&page))
        qFatal("the page does not become active");
}

void PageUnderTest::navigate(const NavParams& params)
{
    page.applyNavParams(params);
    page.refresh();
}

QWidget* PageUnderTest::field(const QString& accessibleName)
{
    auto* found = visibleOne<QWidget>(page, [&](const QWidget* widget) {
        return widget->accessibleName() == accessibleName && widget->focusPolicy() != Qt::NoFocus;
    });
    if (!found)
        qFatal("no field %s", qUtf8Printable(accessibleName));
    return found;
}

QAbstractButton* PageUnderTest::button(const QString& text)
{
    auto* found = visibleOne<QAbstractButton>(page, [&](const QAbstractButton* candidate) {
        return candidate->text() == text || candidate->accessibleName() == text;
    });
    if (!found)
        qFatal("no button %s", qUtf8Printable(text));
    return found;
}

void PageUnderTest::type(const QString& accessibleName, const QString& text)
{
    QWidget* target = field(accessibleName);
    if (auto* area = qobject_cast<QPlainTextEdit*>(target))
        area->setPlainText(text);
    else if (auto* combo = qobject_cast<QComboBox*>(target))
        combo->setEditText(text);
    else if (auto* line = qobject_cast<QLineEdit*>(target))
        line->setText(text);
    else
        qFatal("nothing to type into: %s", qUtf8Printable(accessibleName));
}

QTableView* PageUnderTest::table()
{
    return visibleOne<QTableView>(page, [](const QTableView*) { return true; });
}

QStringList PageUnderTest::cells(int column)
{
    QStringList texts;
    const QTableView* shown = table();
    for (int row = 0; shown && row < shown->model()->rowCount(); ++row) {
        const QModelIndex index = shown->model()->index(row, column);
        const bool ticked
            = index.siblingAtColumn(0).data(Qt::CheckStateRole).toInt() == Qt::Checked;
        texts += (ticked ? u"+"_s : QString()) + index.data().toString();
    }
    return texts;
}

bool PageUnderTest::shows(const QString& words)
{
    return visibleOne<QLabel>(
        page, [&](const QLabel* label) { return label->text().contains(words); });
}

bool PageUnderTest::previewSays(const QString& words)
{
    const auto* preview = visibleOne<DocumentPreview>(page, [](const auto*) { return true; });
    return preview
        && QTest::qWaitFor(
            [&] { return preview->accessibleDescription().remove(u'\n').contains(words); }, 2000);
}

namespace Sample {

qint64 entry(
    const QString& date, const QString& summary, Direction direction, Category category, qint64 fen)
{
    Transaction entry = TestLedger::entry(date, category, direction, fen);
    entry.summary = summary;
    return TestLedger::add(entry);
}

} // namespace Sample

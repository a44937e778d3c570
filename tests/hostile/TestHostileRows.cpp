#include "app/MainWindow.h"
#include "app/PageFactory.h"
#include "core/AppPaths.h"
#include "db/ProjectDao.h"
#include "db/TransactionDao.h"
#include "db/VoucherDao.h"
#include "dialogs/pickers/TxPickerDialog.h"
#include "dialogs/pickers/VoucherPickerDialog.h"
#include "dialogs/preview/VoucherPreview.h"
#include "dialogs/projects/ContractDialog.h"
#include "dialogs/projects/ProjectDialog.h"
#include "dialogs/transaction/RiskReviewDialog.h"
#include "dialogs/transaction/TransactionDialog.h"
#include "dialogs/vouchers/VoucherEditDialog.h"
#include "hostile/HostileRows.h"
#include "hostile/LogFilter.h"
#include "pages/IPage.h"
#include "pages/ledger/LedgerPage.h"
#include "services/csv/CsvExport.h"
#include "services/documents/DocumentRules.h"
#include "support/DatabaseTestCase.h"
#include "support/ModalAnswerer.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "widgets/SegmentedControl.h"

#include <QComboBox>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QStackedWidget>
#include <QTableView>
#include <QToolTip>

#include <functional>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

// What the stores say of rows like these, and may.
const QStringList expectedLog { u"The voucher file "_s, u"SQL error: integer overflow"_s };

bool isInterpreted(const QString& text, Qt::TextFormat format = Qt::AutoText)
{
    const bool rich
        = format == Qt::RichText || (format == Qt::AutoText && Qt::mightBeRichText(text));
    return rich && text.contains(HostileRows::markup);
}

QString nameOf(const QWidget* widget)
{
    return u"%1 %2"_s.arg(QLatin1String(widget->metaObject()->className()), widget->objectName());
}

// The texts in and around the widgets that would show their markup in bold.
QStringList interpreted(const QWidget* root)
{
    QStringList found;
    for (const QWidget* widget : root->findChildren<QWidget*>()) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        if (label && isInterpreted(label->text(), label->textFormat()))
            found += u"text of "_s + nameOf(label);
        if (isInterpreted(widget->toolTip()))
            found += u"tool tip of "_s + nameOf(widget);
    }
    return found;
}

// Windows that a text has made larger than the screen.
QStringList tooLarge(const QWidget* window)
{
    const QSize screen = window->screen()->availableSize();
    const QSize size = window->size().expandedTo(window->minimumSizeHint());
    if (size.width() <= screen.width() && size.height() <= screen.height())
        return {};
    return { u"%1 has %2 by %3 dots"_s.arg(
        nameOf(window), QString::number(size.width()), QString::number(size.height())) };
}

// Points at each cell.
QStringList interpretedToolTips(QAbstractItemView* view)
{
    QStringList found;
    const QAbstractItemModel* model = view->model();
    for (int row = 0; row < model->rowCount(); ++row) {
        for (int column = 0; column < model->columnCount(); ++column) {
            const QModelIndex index = model->index(row, column);
            view->scrollTo(index);
            const QPoint place = view->visualRect(index).center();
            QHelpEvent help(QEvent::ToolTip, place, view->viewport()->mapToGlobal(place));
            QApplication::sendEvent(view->viewport(), &help);
            if (isInterpreted(QToolTip::text()))
                found += u"tool tip of a cell in %1"_s.arg(view->objectName());
        }
    }
    QToolTip::hideText();
    return found;
}

void sortByEachColumn(QWidget* page)
{
    for (auto* table : page->findChildren<QTableView*>()) {
        for (int column = 0; table->isSortingEnabled() && column < table->model()->columnCount();
             ++column) {
            table->sortByColumn(column, Qt::AscendingOrder);
            table->sortByColumn(column, Qt::DescendingOrder);
        }
    }
}

void searchForEverything(IPage* page)
{
    for (auto* field : page->findChildren<QLineEdit*>()) {
        for (const QVariant& text : HostileRows::texts()) {
            if (field->isVisible() && !field->isReadOnly())
                field->setText(
                    text.toString().first(std::min<qsizetype>(text.toString().size(), 50)));
        }
        field->clear();
    }
    for (auto* combo : page->findChildren<QComboBox*>()) {
        for (int choice = combo->count() - 1; combo->isVisible() && choice >= 0; --choice)
            combo->setCurrentIndex(choice);
    }
    page->refresh();
}

using OpenDialogs = std::function<void(const std::function<void(QDialog&)>&)>;

template <typename Dialog> OpenDialogs forEachRow(const QString& table)
{
    return [table](const auto& open) {
        for (const qint64 id : HostileRows::ids(table)) {
            Dialog dialog(id, nullptr);
            open(dialog);
        }
    };
}

} // namespace

class TestHostileRows final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void everyPageShowsThemAsTheyStand_data()
    {
        addColumns<int>("page");
        for (int page = 0; page < pageCount; ++page)
            addCase(qUtf8Printable(pageLabel(PageId(page)).text), page);
    }

    void everyPageShowsThemAsTheyStand()
    {
        QFETCH(int, page);
        QCOMPARE(HostileRows::fill(), QString());
        const LogFilter log(expectedLog);
        MainWindow window(createPage);
        window.resize(1280, 800);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        window.onNavClicked(page);
        const QList<IPage*> pages = window.findChildren<IPage*>();
        const auto visible
            = std::find_if(pages.begin(), pages.end(), std::mem_fn(&IPage::isVisible));
        QVERIFY(visible != pages.end());
        IPage* shown = *visible;
        QStringList found = look(window, shown);
        for (auto* control : shown->findChildren<SegmentedControl*>()) {
            for (auto* segment : control->findChildren<QAbstractButton*>()) {
                segment->click();
                found += look(window, shown);
            }
        }
        searchForEverything(shown);
        found += look(window, shown);
        QCOMPARE(found.join(u'\n'), QString());
    }

    void everyDialogShowsThemAsTheyStand_data()
    {
        addColumns<OpenDialogs>("dialogs");
        addCase("entries", forEachRow<TransactionDialog>(u"transactions"_s));
        addCase("reviews", forEachRow<RiskReviewDialog>(u"transactions"_s));
        addCase("vouchers", forEachRow<VoucherEditDialog>(u"vouchers"_s));
        addCase("projects", forEachRow<ProjectDialog>(u"projects"_s));
        addCase("contracts", OpenDialogs([](const auto& open) {
            for (const qint64 id : HostileRows::ids(u"contracts"_s)) {
                ContractDialog dialog(1, id);
                open(dialog);
            }
        }));
        addCase("previews", OpenDialogs([](const auto& open) {
            const QList<Voucher> all = VoucherDao().search({});
            for (qsizetype i = 0; i < all.size(); ++i) {
                VoucherPreview dialog(all, i);
                open(dialog);
            }
        }));
        addCase("questions", OpenDialogs([](const auto&) {
            LedgerPage page;
            page.refresh();
            for (const Transaction& entry : TransactionDao().search({})) {
                const ModalAnswerer answerer([](QDialog* shown) {
                    if (!tooLarge(shown).isEmpty())
                        QTest::qFail(qUtf8Printable(tooLarge(shown).first()), __FILE__, __LINE__);
                    shown->reject();
                });
                page.onDelete(entry.id);
            }
        }));
        addCase("pickers", OpenDialogs([](const auto& open) {
            TxPickerDialog entries(HostileRows::ids(u"transactions"_s), nullptr);
            open(entries);
            VoucherPickerDialog vouchers({});
            open(vouchers);
        }));
    }

    void everyDialogShowsThemAsTheyStand()
    {
        QFETCH(OpenDialogs, dialogs);
        QCOMPARE(HostileRows::fill(), QString());
        const LogFilter log(expectedLog);
        const QStringList before = TestDatabase::dump();
        QStringList found;
        dialogs([&found](QDialog& dialog) {
            const ModalAnswerer answerer([&found](QDialog* shown) {
                found += interpreted(shown) + tooLarge(shown);
                for (auto* view : shown->findChildren<QTableView*>())
                    found += interpretedToolTips(view);
                (void)shown->grab();
                shown->reject();
            });
            dialog.exec();
        });
        QCOMPARE(found.join(u'\n'), QString());
        QCOMPARE(TestDatabase::dump(), before);
    }

    void amountsBeyondAnySumStopAtTheLargest()
    {
        QCOMPARE(HostileRows::fill(), QString());
        const LogFilter log(expectedLog);
        MainWindow window(createPage);
        window.show();
        window.onNavClicked(int(PageId::Ledger));
        const QString totals = window.findChild<QLabel*>(u"totals"_s)->text();
        QVERIFY2(totals.contains(u"收入合计 92,233,720,368,547,75"_s), qUtf8Printable(totals));
        // A sum that the database cannot hold is said to be unreadable, not to be something else.
        QCOMPARE(TestDatabase::run({ u"UPDATE transactions SET project_id = 1, direction = 'in', "
                                     "amount_fen = 9000000000000000000"_s }),
            QString());
        window.onPageNavigateRequested(PageId::Projects, { { u"projectId"_s, 1 } });
        const QString sums = window.findChild<QLabel*>(u"entryTotals"_s)->text();
        QCOMPARE(sums, u"合计读取失败"_s);
    }

    void noDocumentAddsUpDamagedAmounts()
    {
        const auto total = [](const QList<qint64>& amounts) {
            QList<Transaction> entries;
            for (const qint64 fen : amounts)
                entries += Transaction { .amountFen = fen };
            return DocumentRules::totalFen(entries);
        };
        constexpr auto largest = std::numeric_limits<qint64>::max();
        QCOMPARE(total({ largest - 1, 1 }), largest);
        QVERIFY(!total({ largest, 1 }));
        QVERIFY(!total({ 500, -100 }));
        QVERIFY(!total({ -largest, largest }));
        Transaction damaged { .summary = HostileRows::markup, .amountFen = -700 };
        QCOMPARE(DocumentRules::firstProblem(damaged, damaged.direction),
            u"流水「<b>粗</b>」的金额不正确，请先更正流水再出具文书。"_s);
    }

    void numbersBeyondAnAmountAreTheNearest()
    {
        QCOMPARE(HostileRows::fill(), QString());
        QCOMPARE(TransactionDao().findById(4)->amountFen, std::numeric_limits<qint64>::max());
    }

    void theExportKeepsEveryRowAndItsFields()
    {
        QCOMPARE(HostileRows::fill(), QString());
        const QString path = AppPaths::dataDir() + u"/a.csv"_s;
        const CsvExport::Result result = CsvExport::exportSearch({}, path);
        QVERIFY2(result.ok, qUtf8Printable(result.message));
        QCOMPARE(result.entries, HostileRows::texts().size());
        bool quoted = false;
        int lines = 0;
        int fields = 1;
        const QByteArray csv = TestFile::bytesOf(path);
        for (qsizetype i = 0; i < csv.size(); ++i) {
            quoted ^= csv.at(i) == '"';
            fields += !quoted && csv.at(i) == ',';
            if (quoted || csv.at(i) != '\n')
                continue;
            QCOMPARE(csv.at(i - 1), '\r');
            QCOMPARE(fields, 14);
            fields = 1;
            ++lines;
        }
        QCOMPARE(lines, 1 + HostileRows::texts().size());
        QVERIFY(csv.contains(",90000000000000000.00,") && csv.contains(",-92233720368547758.08,"));
    }

private:
    static QStringList look(MainWindow& window, IPage* page)
    {
        sortByEachColumn(page);
        QStringList found = interpreted(&window) + tooLarge(&window);
        for (auto* view : page->findChildren<QAbstractItemView*>()) {
            if (view->isVisible())
                found += interpretedToolTips(view);
        }
        (void)window.grab();
        return found;
    }
};

static const RegisteredTest<TestHostileRows> registered;

#include "TestHostileRows.moc"

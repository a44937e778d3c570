#include "TourStops.h"

#include "core/Codes.h"
#include "db/DocumentDao.h"
#include "db/TransactionDao.h"
#include "Hands.h"
#include "pages/IPage.h"
#include "services/documents/DocumentService.h"
#include "widgets/AmountField.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace TourStops {

namespace {

constexpr qint64 projectOfTheTour = 3; // has contracts, entries and vouchers

Problem toEnd(IPage& page)
{
    Hands::scrollToEnd(page);
    Hands::waitUntilStill(page);
    return {};
}

// Pages stay where the last visit left them.
Problem toBegin(IPage& page)
{
    Hands::scrollToBegin(page);
    return {};
}

// Whoever presses buttons of the page waits for the thumbnails or the preview that follow.
std::function<Problem(IPage&)> pressing(const QStringList& buttons)
{
    return [buttons](IPage& page) -> Problem {
        for (const QString& text : buttons) {
            if (const Problem problem = Hands::press(page, text))
                return problem;
        }
        Hands::waitUntilStill(page);
        return {};
    };
}

// The ledger keeps the filters of the last visit.
Problem withoutFilters(IPage& page)
{
    return Hands::press(page, u"重置"_s);
}

Problem selectThreeEntries(IPage& page)
{
    return Hands::selectRows(page, u"ledgerTable"_s, 3);
}

// The form keeps what an earlier visit typed.
void emptyFundForm(QWidget& window)
{
    auto* form = window.findChild<QWidget*>(u"FundForm"_s);
    if (!form)
        return; // never visited
    form->findChild<QComboBox*>(u"fundNature"_s)->setEditText({});
    form->findChild<QPlainTextEdit*>(u"extraText"_s)->clear();
    form->findChild<QLineEdit*>(u"settleDate"_s)->clear();
}

Problem decideOnSelected(IPage& page)
{
    if (const Problem unselected = selectThreeEntries(page))
        return unselected;
    const Problem problem = Hands::press(page, u"为所选生成往来决定书"_s);
    emptyFundForm(*page.window());
    Hands::waitUntilStill(*page.window());
    return problem;
}

Problem showContracts(IPage& page)
{
    if (auto* contracts = page.findChild<QTableView*>(u"contracts"_s))
        contracts->selectionModel()->clear();
    return toBegin(page);
}

Problem checkItself(IPage& page)
{
    if (const Problem problem = Hands::press(page, u"立即自检"_s))
        return problem;
    Hands::waitUntilStill(page);
    return toEnd(page);
}

// A form that nobody has touched must not keep the day on which the program was started.
Problem checkToday(const QWidget& form, const QString& dateField)
{
    const auto* date = form.findChild<QLineEdit*>(dateField);
    if (!date || date->text() != QDate::currentDate().toString(Qt::ISODate))
        return u"the field %1 does not hold today's date"_s.arg(dateField);
    return {};
}

Problem fillAnnual(IPage& page)
{
    auto* form = page.findChild<QWidget*>(u"AnnualForm"_s);
    if (const Problem problem = checkToday(*form, u"decisionDate"_s))
        return problem;
    if (const Problem problem = Hands::press(page, u"向股东分配利润"_s))
        return problem;
    form->findChild<AmountField*>(u"profit"_s)->setAmountFen(86'000'00);
    QLineEdit* item = nullptr;
    for (int attempt = 0; attempt < 2 && !item; ++attempt) {
        for (auto* edit : form->findChildren<QLineEdit*>())
            item = edit->accessibleName() == u"其他事项 1"_s ? edit : item;
        if (item)
            break;
        if (const Problem problem = Hands::press(page, u"添加其他事项"_s))
            return problem;
    }
    if (!item)
        return u"no other item can be entered"_s;
    item->setText(u"续聘现任会计师事务所审计公司 2025 年度财务会计报告。"_s);
    Hands::waitUntilStill(page);
    return {};
}

Problem fillFund(IPage& page)
{
    QVariantList ids;
    TransactionFilter owed { .category = Category::ShareholderOut };
    for (const Transaction& entry : TransactionDao().search(owed)) {
        if (ids.size() < 3)
            ids += entry.id;
    }
    page.applyNavParams({ { u"fund"_s, true }, { u"txIds"_s, ids } });
    page.refresh();
    auto* form = page.findChild<QWidget*>(u"FundForm"_s);
    form->findChild<QComboBox*>(u"fundNature"_s)->setEditText(u"备用金"_s);
    form->findChild<QPlainTextEdit*>(u"extraText"_s)
        ->setPlainText(u"用于年末客户走访与打样，凭票核销，结余退回对公账户。"_s);
    if (const Problem problem = Hands::type(*form, u"settleDate"_s, u"2026-01-31"_s))
        return problem;
    Hands::waitUntilStill(page);
    return checkToday(*form, u"decisionDate"_s);
}

Problem fillIndependence(IPage& page)
{
    auto* form = page.findChild<QWidget*>(u"IndependenceForm"_s);
    form->findChild<QPlainTextEdit*>(u"furtherMeasures"_s)
        ->setPlainText(u"公司印章与网银密钥由专人保管，股东个人不得单独支取。"_s);
    Hands::waitUntilStill(page);
    return checkToday(*form, u"baseDate"_s);
}

Problem drawUpStatement(IPage& page)
{
    if (const Problem problem = fillIndependence(page))
        return problem;
    const Problem problem = Hands::press(page, u"生成文书"_s);
    // The form is emptied for the next one, and its preview follows.
    Hands::waitUntilStill(*page.window());
    return problem;
}

Problem removeNewestDocument()
{
    const QList<DocumentRecord> documents = DocumentDao().listWithoutContent();
    if (documents.isEmpty())
        return u"no document was drawn up"_s;
    const DocumentResult removed = DocumentService().deleteDocument(documents.first().id);
    return removed.ok ? Problem() : removed.error;
}

QList<PageStop> documentPages()
{
    const NavParams statement { { u"kind"_s, codeOf(DocType::IndependenceStatement) } };
    return {
        { u"page-documents"_s, PageId::Documents, { { u"year"_s, 2025 } }, fillAnnual, {} },
        { u"page-documents-fund"_s, PageId::Documents, { { u"fund"_s, true } }, fillFund, {} },
        { u"page-documents-statement"_s, PageId::Documents, statement, fillIndependence, {} },
        { u"page-documents-result"_s, PageId::Documents, statement, drawUpStatement,
            removeNewestDocument },
        { u"page-documents-archive"_s, PageId::Documents, { { u"docId"_s, 2 } }, {}, {} },
    };
}

} // namespace

QList<PageStop> pages()
{
    using enum PageId;
    const NavParams project { { u"projectId"_s, projectOfTheTour } };
    QList<PageStop> stops {
        { u"page-dashboard"_s, Dashboard, {}, toBegin, {} },
        { u"page-dashboard-end"_s, Dashboard, {}, toEnd, {} },
        { u"page-ledger"_s, Ledger, {}, withoutFilters, {} },
        { u"page-ledger-high-risk"_s, Ledger, { { u"risk"_s, codeOf(RiskLevel::High) } }, {}, {} },
        { u"page-ledger-project"_s, Ledger, project, {}, {} },
        { u"page-ledger-selection"_s, Ledger,
            { { u"category"_s, codeOf(Category::ShareholderOut) } }, selectThreeEntries, {} },
        { u"page-ledger-decision"_s, Ledger,
            { { u"category"_s, codeOf(Category::ShareholderOut) } }, decideOnSelected, {} },
    };
    stops += documentPages();
    stops += {
        { u"page-projects"_s, Projects, project, showContracts, {} },
        { u"page-projects-end"_s, Projects, project, toEnd, {} },
        { u"page-vouchers"_s, Vouchers, {}, pressing({ u"重置"_s, u"网格"_s }), {} },
        { u"page-vouchers-list"_s, Vouchers, {}, pressing({ u"列表"_s }), {} },
        { u"page-vouchers-unlinked"_s, Vouchers, { { u"linked"_s, u"none"_s } },
            pressing({ u"网格"_s }), {} },
        { u"page-reports"_s, Reports, {}, toBegin, {} },
        { u"page-reports-end"_s, Reports, {}, toEnd, {} },
        { u"page-settings"_s, Settings, {}, toBegin, {} },
        { u"page-settings-end"_s, Settings, {}, checkItself, {} },
    };
    return stops;
}

} // namespace TourStops

#include "app/PageSwitchSuite.h"

#include "app/MainWindow.h"
#include "pages/IPage.h"
#include "selfcheck/Findings.h"
#include "widgets/NavButton.h"

#include <QLabel>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

namespace {

// The pages themselves have been built and shown by the window that the user works in; reading
// the whole ledger for each once more would hold that window up.
IPage* createEmptyPage(PageId id, QWidget* parent)
{
    return new IPage(pageLabel(id).text, parent);
}

bool isOnlyCheckedEntry(const QMainWindow& window, int id)
{
    const QList<NavButton*> entries = window.findChildren<NavButton*>();
    for (qsizetype i = 0; i < entries.size(); ++i) {
        if (entries.at(i)->isChecked() != (i == id))
            return false;
    }
    return entries.size() == pageCount;
}

} // namespace

void checkPageSwitching(Findings& findings)
{
    MainWindow window(createEmptyPage);
    const auto* pages = window.findChild<QStackedWidget*>(u"PageStack"_s);
    const auto* title = window.findChild<QLabel*>(u"PageTitle"_s);
    if (!findings.expect(pages && title && pages->count() == pageCount, u"主窗口的页面不齐全"_s))
        return;
    for (int id = pageCount - 1; id >= 0; --id) {
        const QString name = pageLabel(static_cast<PageId>(id)).text;
        window.onNavClicked(id);
        const auto* page = qobject_cast<const IPage*>(pages->currentWidget());
        if (!findings.expect(page && pages->currentIndex() == id, u"无法切换到「%1」"_s.arg(name)))
            continue;
        findings.expect(title->text() == page->title() && !page->title().isEmpty(),
            u"「%1」的标题不正确"_s.arg(name));
        findings.expect(isOnlyCheckedEntry(window, id), u"「%1」的导航状态不正确"_s.arg(name));
    }
    const int last = pages->currentIndex();
    window.onNavClicked(pageCount);
    findings.expect(pages->currentIndex() == last, u"不存在的页面没有被忽略"_s);
}

#pragma once

#include "pages/PageId.h"
#include "Problem.h"

#include <QList>

#include <functional>

class IPage;
class MainWindow;
class QDialog;

/// What the tour shows of the program, in its order. A new page state or dialog is a new row here.
namespace TourStops {

/// A page, as it is after navigating to it.
struct PageStop {
    QString picture; // "page-ledger"
    PageId page = PageId::Dashboard;
    NavParams params;
    /// Brings the page into the state that is to be shown; may be absent.
    std::function<Problem(IPage& page)> arrange;
    /// Takes back what arranging it stored; may be absent.
    std::function<Problem()> leave;
};

/// A dialog, as it opens from its page.
struct DialogStop {
    QString picture; // "dialog-profile"
    QString objectName; // of the dialog
    PageId page = PageId::Dashboard; // the one that it opens from
    /// Dialogs that have to be passed on the way, the outermost first: object name, and the button
    /// that leads on.
    struct Passage {
        QString objectName;
        QString button;
    };
    QList<Passage> through;
    /// Opens the first dialog from the page and returns once it is closed.
    std::function<Problem(MainWindow& window)> open;
    /// Brings the dialog into the state that is to be shown; may be absent. The tour closes the
    /// dialog without saving.
    std::function<Problem(QDialog& dialog)> arrange;
};

QList<PageStop> pages();
QList<DialogStop> dialogs();

} // namespace TourStops

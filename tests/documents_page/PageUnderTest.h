#pragma once

#include "db/Transaction.h"
#include "pages/documents/DocumentPage.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QTableView>

/// The document page as the main window shows it, and hands for it. Whatever is not visible is
/// not found.
class PageUnderTest final {
public:
    PageUnderTest();

    /// What the main window does with a navigation request.
    void navigate(const NavParams& params);

    /// The visible field, button or box; fails the test when there is none.
    QWidget* field(const QString& accessibleName);
    QAbstractButton* button(const QString& text);
    void press(const QString& text) { button(text)->click(); }
    /// Replaces the text of the visible field.
    void type(const QString& accessibleName, const QString& text);
    /// The visible table.
    QTableView* table();
    /// The cells of a column, ticked ones with a "+".
    QStringList cells(int column);
    /// Whether a label or banner with these words is to be seen.
    bool shows(const QString& words);
    /// The words of the visible preview, once it is up to date.
    bool previewSays(const QString& words);

    DocumentPage page;
};

namespace Sample {

/// Stores an entry; its id.
qint64 entry(const QString& date, const QString& summary, Direction direction,
    Category category = Category::ShareholderOut, qint64 fen = 100'000);

} // namespace Sample

#pragma once

#include <QWidget>

class Banner;
class Card;
class DocumentFilter;
class DocumentModel;
class EmptyState;
class QAction;
class QComboBox;
class QHBoxLayout;
class QKeySequence;
class QLineEdit;
class QStackedWidget;
class QTableView;
struct ArchivedDocument;

/// The documents drawn up so far, and what can be done with each.
class DocumentArchive final : public QWidget {
    Q_OBJECT

public:
    explicit DocumentArchive(QWidget* parent = nullptr);

    /// Reads the documents again; selection and filters stay.
    void refresh();

    /// Selects the document with the next refresh; filters that hide it are cleared.
    void request(qint64 docId);

signals:
    /// The user wants to see the entries that a document covers.
    void entriesRequested(const QList<qint64>& entryIds);
    /// A document was removed, so that its entries may be risky again.
    void removed();

private:
    Card* buildCard();
    QHBoxLayout* buildFilters();
    QHBoxLayout* buildCommands();
    void buildTable();
    QAction* addCommand(QHBoxLayout* line, const QString& text, const QList<QKeySequence>& keys);

    void showRequested();
    void showLeftovers();
    void fillYears();
    void applyFilter();
    void clearFilter();
    /// False when the document is not shown.
    bool select(qint64 docId);
    /// The selected document; null without one.
    const ArchivedDocument* selected() const;
    qint64 selectedId() const;
    void onSelectionChanged();
    void showEntries();
    void onRegenerate();
    void onRemove();

    Banner* m_notice;
    DocumentModel* m_model;
    DocumentFilter* m_filter;
    QComboBox* m_kind = nullptr;
    QComboBox* m_year = nullptr;
    QLineEdit* m_keyword = nullptr;
    QStackedWidget* m_stack = nullptr;
    QTableView* m_table = nullptr;
    EmptyState* m_empty = nullptr;
    QList<QAction*> m_commands;
    QAction* m_showEntries = nullptr;
    qint64 m_requested = 0;
};

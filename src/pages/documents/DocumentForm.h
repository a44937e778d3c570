#pragma once

#include "services/documents/DocumentService.h"

#include <QSet>
#include <QWidget>

class Banner;
class DateEditor;
class DocumentPreview;
class QPushButton;
class QVBoxLayout;
class ResultStrip;

/// Frame of the three forms: the input on the left above the button that draws up the document,
/// the page as it will look on the right. Whatever keeps a document from being drawn up is told
/// in a box and leaves the input as it is.
class DocumentForm : public QWidget {
    Q_OBJECT

public:
    /// Reads again what the form shows from the stores; the input stays.
    virtual void refresh();

signals:
    /// A document was stored.
    void stored(qint64 docId);

protected:
    DocumentForm(const QString& objectName, QWidget* parent);

    /// Where the cards go.
    QVBoxLayout* body() const { return m_body; }
    /// A message above the form; nothing is shown without a text.
    void showNotice(const QString& text);

    /// A date field that holds today's date, whatever day it becomes, until it is changed.
    DateEditor* makeTodayField(const QString& objectName, QWidget* parent);
    /// To be called after every change of the input.
    void inputChanged();

    bool event(QEvent* event) override;

    /// The first thing that is missing in the input, in Chinese; empty when nothing is.
    virtual QString firstProblem() const = 0;
    /// Whether drawing up the page takes so long that the preview waits to be asked for.
    virtual bool isLong() const;
    /// The last question before a document is drawn up.
    virtual bool confirm();
    virtual QString previewHtml() const = 0;
    virtual DocumentResult generate() = 0;
    /// Makes the form ready for the next document after one was stored.
    virtual void prepareNext() = 0;

private:
    QWidget* buildInput();
    QWidget* buildPreview();
    void onGenerate();
    void showToday();

    Banner* m_notice;
    ResultStrip* m_result;
    QVBoxLayout* m_body = nullptr;
    DocumentPreview* m_preview = nullptr;
    Banner* m_held = nullptr;
    QList<DateEditor*> m_todayFields;
    QSet<DateEditor*> m_changedByUser; // of the fields above
    bool m_showingToday = false;
};

#pragma once

#include "services/documents/DocumentService.h"

#include <QWidget>

class Banner;
class DocumentPreview;
class QPushButton;
class QScrollArea;
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

    /// Where somebody who was sent here begins: never at the button that draws up the document,
    /// which a key press too many would set off.
    void focusFirstField();

signals:
    /// A document was stored.
    void stored(qint64 docId);

protected:
    DocumentForm(const QString& objectName, QWidget* parent);

    /// Where the cards go.
    QVBoxLayout* body() const { return m_body; }
    /// A message above the form; nothing is shown without a text.
    void showNotice(const QString& text);

    /// To be called after every change of the input.
    void inputChanged();

    virtual QWidget* firstField() const = 0;
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

    Banner* m_notice;
    ResultStrip* m_result;
    QScrollArea* m_scroll = nullptr;
    QVBoxLayout* m_body = nullptr;
    DocumentPreview* m_preview = nullptr;
    Banner* m_held = nullptr;
};

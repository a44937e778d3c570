#pragma once

#include <QWidget>

class Banner;
struct DocumentResult;

/// Tells that a document was drawn up and what comes next: print, sign, scan, archive.
class ResultStrip final : public QWidget {
    Q_OBJECT

public:
    explicit ResultStrip(QWidget* parent = nullptr);

    /// Shows the strip for a document that was stored.
    void showResult(const DocumentResult& result);

    /// Takes the strip away when its document is no longer stored.
    void refresh();

private:
    Banner* m_banner;
    qint64 m_docId = 0;
};

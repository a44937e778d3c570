#pragma once

#include <QAbstractScrollArea>
#include <QBuffer>
#include <QCache>
#include <QImage>
#include <QTimer>

#include <functional>

class QPdfDocument;

/// The document as its PDF will look, sheet under sheet on white paper, drawn up anew a moment
/// after the input changed.
class DocumentPreview final : public QAbstractScrollArea {
    Q_OBJECT

public:
    /// Gives the page to show.
    using Composer = std::function<QString()>;

    explicit DocumentPreview(Composer compose, QWidget* parent = nullptr);

    /// Shows the present input soon; once for any number of changes in a row, and not before it
    /// can be seen.
    void schedule();
    /// Shows the present input at once.
    void showNow();
    /// Leaves what is shown as it is until it is asked for again.
    void hold();

    /// In the size of the paper instead of as wide as there is room.
    void setNaturalSize(bool natural);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void updateScrollRange();
    QPoint scrolled() const;
    /// Of the sheet, counted from 0, in the scrolled viewport.
    QRect sheetRect(int index) const;
    QImage sheet(int index, QSize size);

    Composer m_compose;
    QTimer m_timer;
    bool m_outdated = true;
    bool m_naturalSize = false;
    QString m_html;
    QBuffer m_pdf;
    QPdfDocument* m_document;
    QCache<int, QImage> m_sheets; // as they were painted last
};

#pragma once

#include "widgets/RowDelegate.h"

#include <QSize>

class QAbstractItemView;

/// Draws the thumbnail of a row's file, and that it is missing.
class ThumbnailDelegate final : public RowDelegate {
    Q_OBJECT

public:
    /// The file's absolute path; empty when it is missing.
    static constexpr int FilePathRole = Qt::UserRole + 101;

    /// Serves one column of the view, which it repaints as pictures get ready; the caller sets it
    /// there.
    ThumbnailDelegate(QSize thumbnailSize, QAbstractItemView* view);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;

private:
    const QSize m_size;
};

#pragma once

#include "Problem.h"

#include <QStringList>

class QWidget;

/// The pictures of the demo: one PNG file per window and theme, "light/page-ledger.png".
class Pictures final {
public:
    /// `folder` is made when the first picture is taken.
    explicit Pictures(const QString& folder);

    /// Takes a picture of a window in the present theme. A picture that shows nothing, or one whose
    /// name is taken, is a problem.
    [[nodiscard]] Problem take(QWidget& window, const QString& name);

    /// The same in every theme; the window is left in the present one.
    [[nodiscard]] Problem takeInEveryTheme(QWidget& window, const QString& name);

    /// Absolute paths, in the order in which they were taken.
    const QStringList& files() const { return m_files; }

private:
    QString m_folder;
    QStringList m_files;
};

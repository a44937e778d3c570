#pragma once

#include "DemoSize.h"

#include <QString>

/// Puts a copy of the demo into the folder that the demo fills and runs it there: the program keeps
/// its data beside its executable. It runs without a display, on a screen of a fixed size and in
/// China's time, wherever it is started.
class DemoLauncher final {
public:
    /// The first argument of the copy, before its size.
    static QString insideOption();
    static QString nameOf(DemoSize size);

    /// An empty folder means a new one among the temporary files.
    DemoLauncher(const QString& folder, DemoSize size);

    /// The exit status of the demo; 1 when it could not start.
    [[nodiscard]] int run();

private:
    bool prepareFolder();
    [[nodiscard]] int runCopy(const QString& copy) const;
    static bool fail(const QString& reason);

    QString m_folder;
    DemoSize m_size;
};

#pragma once

#include "core/InstanceLock.h"
#include "db/CompanyProfile.h"

#include <memory>
#include <optional>

class MainWindow;
class SplashScreen;

/// The gates between the start of the program and the first record on the screen, in their fixed
/// order: data directory, log, lock, database, profile and theme, splash, main window,
/// disclaimer, first-run wizard, password. What it opens it closes again when it is destroyed,
/// the main window before the database; finishing the logger is left to the caller.
class Startup final {
public:
    Startup();
    ~Startup();
    Startup(const Startup&) = delete;
    Startup& operator=(const Startup&) = delete;

    /// Passes the gates and runs the event loop. The exit status: 0 after a normal end and when
    /// the user declines a gate, 1 after a failure that was shown in a message box,
    /// ProgramEnd::restartStatus when the program is to start anew.
    int run();

private:
    // A gate lets pass with nothing, or ends the program with an exit status.
    using Verdict = std::optional<int>;

    Verdict openData();
    Verdict prepareDirectories();
    Verdict takeLock();
    Verdict openDatabase();
    Verdict loadProfile();
    Verdict buildWindow();
    Verdict passDisclaimer();
    Verdict passWizard();
    Verdict passPassword();
    int showWindow();

    InstanceLock m_lock;
    CompanyProfile m_profile;
    std::unique_ptr<MainWindow> m_window;
};

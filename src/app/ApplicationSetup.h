#pragma once

class QApplication;

/// What is settled once, before anything is read or shown: font, names and version, Chinese
/// texts of Qt's own dialogs, and a home directory that stays clean.
namespace ApplicationSetup {

/// Keeps Qt's file dialog from writing its view state into the user's configuration folder: it
/// goes to a folder that ends with the program. Before the QApplication.
void keepHomeClean();

/// After the QApplication, before the first window.
void configure(QApplication& app);

} // namespace ApplicationSetup

#pragma once

#include <functional>

class QDialog;
class QString;

/// Answers Qt's own chooser with a folder.
std::function<void(QDialog*)> chooseFolder(const QString& folder);

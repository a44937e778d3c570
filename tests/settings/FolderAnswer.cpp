#include "FolderAnswer.h"

#include <QDialog>
#include <QLineEdit>

using namespace Qt::StringLiterals;

std::function<void(QDialog*)> chooseFolder(const QString& folder)
{
    return [folder](QDialog* dialog) {
        // As typed: the list of folders is still being read.
        dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(folder);
        dialog->accept();
    };
}

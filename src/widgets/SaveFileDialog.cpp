#include "widgets/SaveFileDialog.h"

#include "widgets/StartFolder.h"

#include <QFileDialog>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

QString& lastFolder()
{
    static QString folder;
    return folder;
}

} // namespace

namespace SaveFileDialog {

QString ask(QWidget* parent, const QString& title, const QString& filter, const QString& fileName)
{
    QFileDialog dialog(parent, title, StartFolder::lastOrDocuments(lastFolder()), filter);
    dialog.setObjectName(u"SaveFileDialog"_s);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDefaultSuffix(QFileInfo(fileName).suffix());
    dialog.selectFile(fileName);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    const QString path = dialog.selectedFiles().constFirst();
    lastFolder() = QFileInfo(path).absolutePath();
    return path;
}

} // namespace SaveFileDialog

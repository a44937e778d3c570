#include "widgets/SaveFileDialog.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

QString& lastFolder()
{
    static QString folder;
    return folder;
}

QString startFolder()
{
    const bool isThere = !lastFolder().isEmpty() && QFileInfo(lastFolder()).isDir();
    return isThere ? lastFolder()
                   : QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

} // namespace

namespace SaveFileDialog {

QString ask(QWidget* parent, const QString& title, const QString& filter, const QString& fileName)
{
    QFileDialog dialog(parent, title, startFolder(), filter);
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

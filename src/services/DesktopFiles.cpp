#include "services/DesktopFiles.h"

#include "core/TextRules.h"
#include "services/FileRules.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace DesktopFiles {

namespace {

bool isThere(QWidget* parent, const QString& path)
{
    if (QFileInfo(path).isFile())
        return true;
    warn(parent, u"文件缺失"_s, u"文件不存在：\n%1"_s.arg(QDir::toNativeSeparators(path)));
    return false;
}

// The archive takes in nothing else; what else lies there came with data from elsewhere.
bool isHarmless(QWidget* parent, const QString& path)
{
    if (FileRules::acceptedExtensions().contains(QFileInfo(path).suffix().toLower()))
        return true;
    warn(parent, u"无法打开"_s,
        u"为安全起见，只打开图片和 PDF 文件：\n%1"_s.arg(QDir::toNativeSeparators(path)));
    return false;
}

bool openInDesktop(QWidget* parent, const QString& path)
{
    if (QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
        return true;
    warn(parent, u"无法打开"_s,
        u"系统缺少可打开「%1」的查看程序。"_s.arg(QDir::toNativeSeparators(path)));
    return false;
}

} // namespace

bool openFile(QWidget* parent, const QString& path)
{
    return isThere(parent, path) && isHarmless(parent, path) && openInDesktop(parent, path);
}

bool showInFolder(QWidget* parent, const QString& path)
{
    if (!isThere(parent, path))
        return false;
    return QProcess::startDetached(
               u"explorer.exe"_s, { u"/select,"_s, QDir::toNativeSeparators(path) })
        || openInDesktop(parent, QFileInfo(path).absolutePath());
}

bool openFolder(QWidget* parent, const QString& path)
{
    if (QFileInfo(path).isDir())
        return openInDesktop(parent, path);
    warn(parent, u"文件夹缺失"_s, u"文件夹不存在：\n%1"_s.arg(QDir::toNativeSeparators(path)));
    return false;
}

void warn(QWidget* parent, const QString& title, const QString& text)
{
    QMessageBox box(parent);
    box.setObjectName(u"MessageBox"_s);
    box.setIcon(QMessageBox::Warning);
    box.setWindowTitle(title);
    box.setTextFormat(Qt::PlainText);
    box.setText(TextRules::withoutDirectionMarks(text));
    QPushButton* accept = box.addButton(u"确定"_s, QMessageBox::AcceptRole);
    box.setDefaultButton(accept);
    box.setEscapeButton(accept);
    box.exec();
}

} // namespace DesktopFiles

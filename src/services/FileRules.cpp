#include "services/FileRules.h"

using namespace Qt::StringLiterals;

namespace FileRules {

QStringList acceptedExtensions()
{
    return { u"jpg"_s, u"jpeg"_s, u"png"_s, u"bmp"_s, u"pdf"_s };
}

QString fileDialogFilter()
{
    return u"凭证文件 (*.jpg *.jpeg *.png *.bmp *.pdf);;所有文件 (*.*)"_s;
}

QString formatFileSize(qint64 bytes)
{
    if (bytes < 1024)
        return u"%1 B"_s.arg(bytes);
    const double kilobytes = static_cast<double>(bytes) / 1024.0;
    return kilobytes < 1024.0 ? u"%1 KB"_s.arg(kilobytes, 0, 'f', 1)
                              : u"%1 MB"_s.arg(kilobytes / 1024.0, 0, 'f', 2);
}

} // namespace FileRules

#include "services/vouchers/VoucherQueue.h"

#include "core/TextRules.h"
#include "db/VoucherDao.h"
#include "services/FileRules.h"
#include "services/vouchers/VoucherService.h"

#include <QFileInfo>

namespace {

QueueState stateOf(const QFileInfo& info)
{
    if (!info.isFile())
        return QueueState::Unreadable;
    if (!FileRules::acceptedExtensions().contains(info.suffix().toLower()))
        return QueueState::UnsupportedType;
    if (info.size() > FileRules::maxFileSize)
        return QueueState::TooLarge;
    bool readable = false;
    const QString digest = VoucherService::computeSha256(info.filePath(), &readable);
    if (!readable)
        return QueueState::Unreadable;
    return VoucherDao().existsBySha256(digest) ? QueueState::Duplicate : QueueState::Ready;
}

} // namespace

QString QueuedFile::fileName() const
{
    return QFileInfo(path).fileName();
}

QString QueuedFile::defaultName() const
{
    const QString baseName = QFileInfo(path).completeBaseName();
    return TextRules::asStored(TextRules::isBlank(baseName) ? fileName() : baseName);
}

QueuedFile VoucherQueue::inspect(const QString& path)
{
    const QFileInfo info(path);
    return { .path = info.absoluteFilePath(), .size = info.size(), .state = stateOf(info) };
}

#include "services/backup/RestoreRepair.h"

#include "services/backup/RestoreSwap.h"

using namespace Qt::StringLiterals;

namespace RestoreRepair {

std::optional<QString> run()
{
    const bool unfinished = RestoreSwap::isUnfinished();
    if (unfinished)
        qWarning("A restore was interrupted: putting the data from before it back in place");
    auto problem = RestoreSwap::takeBack();
    if (!problem)
        problem = RestoreSwap::clearLeftovers();
    if (problem)
        return u"上次数据恢复中断，%1\n\n程序未删除任何文件。请关闭占用数据目录的其他程序后重新启动。"_s
            .arg(*problem);
    if (unfinished)
        qInfo("Interrupted restore repaired: database and voucher folder are those from before");
    return {};
}

} // namespace RestoreRepair

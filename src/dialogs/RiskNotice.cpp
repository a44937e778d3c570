#include "dialogs/RiskNotice.h"

#include "services/risk/RiskService.h"
#include "widgets/MessageBox.h"
#include "widgets/Toast.h"

using namespace Qt::StringLiterals;

namespace RiskNotice {

bool warnIfBehind(QWidget* parent)
{
    if (!RiskService::isBehind())
        return false;
    MessageBox::warn(parent, u"风险等级未更新"_s,
        u"改动已保存，但风险等级未能重新判定，现在显示的等级可能不对。\n"
        "请检查磁盘空间是否已满、数据库是否被其他程序占用，然后重新打开软件：打开时会自动重新判定。"_s);
    return true;
}

void tell(QWidget* parent, const QString& done)
{
    if (!warnIfBehind(parent))
        Toast::show(parent->window(), done);
}

} // namespace RiskNotice

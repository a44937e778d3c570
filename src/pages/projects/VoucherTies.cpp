#include "pages/projects/VoucherTies.h"

#include "db/Contract.h"
#include "dialogs/pickers/VoucherPickerDialog.h"
#include "dialogs/projects/UnlinkVouchersDialog.h"
#include "services/projects/ProjectService.h"
#include "widgets/MessageBox.h"
#include "widgets/Toast.h"

using namespace Qt::StringLiterals;

namespace VoucherTies {

namespace {

Outcome told(QWidget* parent, const ProjectService::Result& result, const QString& done,
    const QString& failureTitle)
{
    if (!result.ok) {
        MessageBox::warn(parent, failureTitle, result.message);
        return Outcome::Failed;
    }
    Toast::show(parent->window(), done);
    return Outcome::Written;
}

} // namespace

Outcome add(QWidget* parent, TargetType target, qint64 targetId, const QList<Voucher>& tied)
{
    QSet<qint64> tiedIds;
    for (const Voucher& voucher : tied)
        tiedIds += voucher.id;
    VoucherPickerDialog picker(tiedIds, parent);
    if (picker.exec() != QDialog::Accepted || picker.selectedIds().isEmpty())
        return Outcome::Declined;
    const QList<qint64> chosen = picker.selectedIds();
    return told(parent, ProjectService::linkVouchers(target, targetId, chosen),
        u"已关联 %1 张凭证"_s.arg(chosen.size()), u"关联失败"_s);
}

Outcome remove(QWidget* parent, const Contract& contract, const QList<Voucher>& tied)
{
    UnlinkVouchersDialog picker(contract.name, tied, parent);
    if (picker.exec() != QDialog::Accepted)
        return Outcome::Declined;
    const QList<qint64> chosen = picker.selectedIds();
    return told(parent, ProjectService::unlinkVouchers(TargetType::Contract, contract.id, chosen),
        u"已解除 %1 张凭证的关联"_s.arg(chosen.size()), u"移除失败"_s);
}

} // namespace VoucherTies

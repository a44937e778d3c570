#include "dialogs/transaction/RiskReviewDialog.h"

#include "db/TransactionDao.h"
#include "widgets/MessageBox.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

RiskReviewDialog::RiskReviewDialog(qint64 entryId, QWidget* parent)
    : FormDialog(u"人工复核"_s, parent)
    , m_entry(TransactionDao().findById(entryId).value_or(Transaction()))
{
    setObjectName(u"RiskReviewDialog"_s);
    addRejectButton(u"取消"_s);
}

int RiskReviewDialog::exec()
{
    if (m_entry.id > 0)
        return FormDialog::exec();
    MessageBox::warn(parentWidget(), u"无法打开流水"_s, u"该流水可能已被删除。"_s);
    return Rejected;
}

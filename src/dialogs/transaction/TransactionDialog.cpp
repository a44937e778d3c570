#include "dialogs/transaction/TransactionDialog.h"

#include "db/TransactionDao.h"
#include "widgets/MessageBox.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

TransactionDialog::TransactionDialog(qint64 id, QWidget* parent)
    : FormDialog(id > 0 ? u"编辑资金流水"_s : u"登记资金流水"_s, parent)
{
    setObjectName(u"TransactionDialog"_s);
    if (id > 0) {
        const std::optional<Transaction> stored = TransactionDao().findById(id);
        m_isLoaded = stored.has_value();
        m_entry = stored.value_or(Transaction());
    }
    addRejectButton(u"取消"_s);
}

TransactionDialog::TransactionDialog(const Transaction& pattern, QWidget* parent)
    : TransactionDialog(qint64(0), parent)
{
    m_entry = pattern;
    m_entry.id = 0;
    m_entry.transDate = QDate::currentDate();
}

int TransactionDialog::exec()
{
    if (m_isLoaded)
        return FormDialog::exec();
    MessageBox::warn(parentWidget(), u"无法打开流水"_s, u"该流水可能已被删除。"_s);
    return Rejected;
}

#include "dialogs/vouchers/LinkedEntries.h"

#include "core/Money.h"
#include "core/TextRules.h"
#include "db/TransactionDao.h"
#include "dialogs/pickers/TxPickerDialog.h"
#include "widgets/ButtonRole.h"
#include "widgets/RowDelegate.h"

#include <QHash>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QSet>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

// Above this it is cheaper to read the ledger once than each entry for itself.
constexpr qsizetype mostSingleReads = 50;

QString lineOf(const Transaction& entry)
{
    return u"#%1  %2  %3  %4 元"_s.arg(QString::number(entry.id),
        TextRules::dateText(entry.transDate), entry.summary, Money::format(entry.amountFen));
}

QHash<qint64, QString> linesOf(TransactionDao& dao, const QList<qint64>& ids)
{
    QHash<qint64, QString> lines;
    if (ids.size() > mostSingleReads) {
        for (const Transaction& entry : dao.search({}))
            lines.insert(entry.id, lineOf(entry));
        return lines;
    }
    for (const qint64 id : ids) {
        if (const auto entry = dao.findById(id))
            lines.insert(id, lineOf(*entry));
    }
    return lines;
}

} // namespace

LinkedEntries::LinkedEntries(QWidget* parent)
    : QWidget(parent)
    , m_pick(makeButton(u"选择关联流水…"_s, ButtonRole::Default, this))
    , m_clear(makeButton(u"清空流水"_s, ButtonRole::Default, this))
    , m_lines(new QListWidget(this))
{
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(m_pick);
    buttons->addWidget(m_clear);
    buttons->addStretch();
    m_lines->setObjectName(u"linkedEntries"_s);
    m_lines->setAccessibleName(u"关联流水"_s);
    m_lines->setItemDelegate(new RowDelegate(m_lines));
    m_lines->setUniformItemSizes(true);
    m_lines->setTabKeyNavigation(false);
    m_lines->setMinimumHeight(72);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addLayout(buttons);
    column->addWidget(m_lines, 1);
    connect(m_pick, &QPushButton::clicked, this, &LinkedEntries::onPickTx);
    connect(m_clear, &QPushButton::clicked, this, &LinkedEntries::onClearTx);
    setEntryIds({});
}

void LinkedEntries::setEntryIds(const QList<qint64>& ids)
{
    m_ids.clear();
    m_lines->clear();
    TransactionDao dao;
    const QHash<qint64, QString> lines = linesOf(dao, ids);
    // An entry that cannot be read is not one that is gone: saving must keep its link.
    const bool incomplete = !dao.lastError().isEmpty();
    QSet<qint64> seen;
    for (const qint64 id : ids) {
        if (seen.contains(id) || (!incomplete && !lines.contains(id)))
            continue;
        seen += id;
        m_ids += id;
        m_lines->addItem(lines.value(id, u"#%1"_s.arg(id)));
    }
    m_clear->setEnabled(!m_ids.isEmpty());
}

void LinkedEntries::onPickTx()
{
    TxPickerDialog picker(m_ids, this);
    if (picker.exec() == QDialog::Accepted)
        setEntryIds(picker.selectedIds());
}

void LinkedEntries::onClearTx()
{
    setEntryIds({});
}

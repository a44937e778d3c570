#include "dialogs/transaction/AttachedVoucherModel.h"

#include "core/TextRules.h"
#include "theme/Theme.h"

#include <QFont>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString changeText(AttachedVoucherModel::State state)
{
    switch (state) {
    case AttachedVoucherModel::State::Removed:
        return u"移除关联（保存后生效）"_s;
    case AttachedVoucherModel::State::Added:
        return u"新增关联（保存后生效）"_s;
    case AttachedVoucherModel::State::Attached:
        break;
    }
    return u"已关联"_s;
}

} // namespace

QString AttachedVoucherModel::lineOf(const Voucher& voucher)
{
    return u"[%1] %2  %3"_s.arg(
        labelOf(voucher.voucherType), voucher.name, TextRules::dateText(voucher.voucherDate));
}

void AttachedVoucherModel::setAttached(const QList<Voucher>& vouchers)
{
    beginResetModel();
    m_rows.clear();
    for (const Voucher& voucher : vouchers)
        m_rows += { voucher, State::Attached };
    endResetModel();
}

void AttachedVoucherModel::add(const Voucher& voucher)
{
    const auto found = std::find_if(m_rows.cbegin(), m_rows.cend(),
        [&](const Row& row) { return row.voucher.id == voucher.id; });
    if (found != m_rows.cend()) {
        if (found->state == State::Removed)
            setState(static_cast<int>(found - m_rows.cbegin()), State::Attached);
        return;
    }
    beginInsertRows({}, rowCount(), rowCount());
    m_rows += { voucher, State::Added };
    endInsertRows();
    emit changed();
}

void AttachedVoucherModel::toggle(int row)
{
    if (stateAt(row) != State::Added) {
        setState(row, stateAt(row) == State::Removed ? State::Attached : State::Removed);
        return;
    }
    beginRemoveRows({}, row, row);
    m_rows.removeAt(row);
    endRemoveRows();
    emit changed();
}

QSet<qint64> AttachedVoucherModel::keptIds() const
{
    QSet<qint64> ids;
    for (const Row& row : m_rows) {
        if (row.state != State::Removed)
            ids += row.voucher.id;
    }
    return ids;
}

int AttachedVoucherModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int AttachedVoucherModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant AttachedVoucherModel::data(const QModelIndex& index, int role) const
{
    const Row& row = m_rows.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return index.column() == Description ? lineOf(row.voucher) : changeText(row.state);
    case Qt::ForegroundRole:
        return colourOf(row.state, index.column());
    case Qt::FontRole:
        if (row.state == State::Removed && index.column() == Description) {
            QFont font;
            font.setPixelSize(13);
            font.setStrikeOut(true);
            return font;
        }
        return {};
    default:
        return {};
    }
}

QVariant AttachedVoucherModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == Description ? u"凭证"_s : u"关联状态"_s;
}

QVariant AttachedVoucherModel::colourOf(State state, int column)
{
    const Theme& theme = Theme::instance();
    if (column == Description)
        return theme.color(state == State::Removed ? Token::TextSecondary : Token::TextPrimary);
    switch (state) {
    case State::Removed:
        return theme.color(Token::DangerText);
    case State::Added:
        return theme.color(Token::SuccessText);
    case State::Attached:
        break;
    }
    return theme.color(Token::TextSecondary);
}

QList<qint64> AttachedVoucherModel::idsOf(State state) const
{
    QList<qint64> ids;
    for (const Row& row : m_rows) {
        if (row.state == state)
            ids += row.voucher.id;
    }
    return ids;
}

void AttachedVoucherModel::setState(int row, State state)
{
    m_rows[row].state = state;
    emit dataChanged(index(row, Description), index(row, Change));
    emit changed();
}

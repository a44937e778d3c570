#include "pages/vouchers/VoucherCardGrid.h"

#include "pages/vouchers/VoucherCard.h"

#include <QApplication>
#include <QScrollBar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int spacing = 12;
// The focus ring has its place outside of the cards.
constexpr int ring = 3;
constexpr int rowStep = VoucherCard::cardHeight + spacing;

int heightOf(int rows)
{
    return std::max(0, rows * rowStep - spacing);
}

} // namespace

VoucherCardGrid::VoucherCardGrid(QWidget* parent)
    : QScrollArea(parent)
{
    setObjectName(u"VoucherCardGrid"_s);
    setAccessibleName(u"凭证卡片"_s);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(QFrame::NoFrame);
    setViewportMargins(ring, ring, ring, ring);
    verticalScrollBar()->setSingleStep(rowStep / 3);
    setWidget(new QWidget);
}

void VoucherCardGrid::setVouchers(const QList<VoucherCardData>& vouchers)
{
    m_vouchers = vouchers;
    for (const auto& [position, card] : m_shown.asKeyValueRange()) {
        if (position < m_vouchers.size())
            card->showVoucher(m_vouchers.at(position));
    }
    layOut();
    orderTabs(); // links may have come or gone
}

const VoucherCardData* VoucherCardGrid::find(qint64 voucherId) const
{
    const auto found = std::find_if(m_vouchers.cbegin(), m_vouchers.cend(),
        [voucherId](const VoucherCardData& shown) { return shown.voucher.id == voucherId; });
    return found != m_vouchers.cend() ? &*found : nullptr;
}

void VoucherCardGrid::setMostRows(int rows)
{
    m_mostRows = rows;
    layOut();
}

void VoucherCardGrid::setUnlinkHint(const QString& hint)
{
    m_unlinkHint = hint;
    for (auto* card : findChildren<VoucherCard*>())
        card->setUnlinkHint(hint);
}

void VoucherCardGrid::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    layOut();
}

void VoucherCardGrid::scrollContentsBy(int dx, int dy)
{
    QScrollArea::scrollContentsBy(dx, dy);
    fill();
}

void VoucherCardGrid::layOut()
{
    // Whether the scroll bar shows must not change the columns, on which it depends.
    const int bar = verticalScrollBar()->sizeHint().width();
    const QSize whole = size() - QSize(2 * ring, 2 * ring);
    m_columns = std::max(1, (whole.width() - bar + spacing) / (VoucherCard::narrowest + spacing));
    const int rows = (static_cast<int>(m_vouchers.size()) + m_columns - 1) / m_columns;
    const bool scrolls = m_mostRows > 0 ? rows > m_mostRows : heightOf(rows) > whole.height();
    const int room = std::max(VoucherCard::narrowest, whole.width() - (scrolls ? bar : 0));
    m_cardWidth = (room - (m_columns - 1) * spacing) / m_columns;
    if (m_mostRows > 0)
        setFixedHeight(heightOf(std::min(rows, m_mostRows)) + 2 * ring);
    widget()->resize(room, heightOf(rows));
    fill();
}

QRect VoucherCardGrid::placeOf(int position) const
{
    return { position % m_columns * (m_cardWidth + spacing), position / m_columns * rowStep,
        m_cardWidth, VoucherCard::cardHeight };
}

void VoucherCardGrid::fill()
{
    const int top = verticalScrollBar()->value();
    // A row beyond each edge, so that Tab always finds the next card.
    const int first = std::max(0, (top / rowStep - 1) * m_columns);
    const int end = std::min(static_cast<int>(m_vouchers.size()),
        ((top + viewport()->height()) / rowStep + 2) * m_columns);
    recycle(first, end);
    bool isNew = false;
    for (int position = first; position < end; ++position) {
        if (m_shown.contains(position))
            continue;
        VoucherCard* card = m_spare.isEmpty() ? makeCard() : m_spare.takeLast();
        card->showVoucher(m_vouchers.at(position));
        m_shown.insert(position, card);
        isNew = true;
    }
    for (const auto& [position, card] : m_shown.asKeyValueRange()) {
        card->setGeometry(placeOf(position));
        card->show();
    }
    if (isNew)
        orderTabs();
}

void VoucherCardGrid::recycle(int first, int end)
{
    const QWidget* focused = QApplication::focusWidget();
    for (auto shown = m_shown.begin(); shown != m_shown.end();) {
        const bool isGone = shown.key() >= m_vouchers.size();
        const bool isInSight = shown.key() >= first && shown.key() < end;
        // A card that is scrolled away keeps the keyboard.
        const bool hasKeyboard = focused && shown.value()->isAncestorOf(focused);
        if (!isGone && (isInSight || hasKeyboard)) {
            ++shown;
            continue;
        }
        shown.value()->hide();
        m_spare += shown.value();
        shown = m_shown.erase(shown);
    }
}

VoucherCard* VoucherCardGrid::makeCard()
{
    auto* card = new VoucherCard(widget());
    card->setUnlinkHint(m_unlinkHint);
    connect(card, &VoucherCard::previewRequested, this, &VoucherCardGrid::previewRequested);
    connect(
        card, &VoucherCard::quickPreviewRequested, this, &VoucherCardGrid::quickPreviewRequested);
    connect(card, &VoucherCard::folderRequested, this, &VoucherCardGrid::folderRequested);
    connect(card, &VoucherCard::editRequested, this, &VoucherCardGrid::editRequested);
    connect(card, &VoucherCard::deleteRequested, this, &VoucherCardGrid::deleteRequested);
    connect(card, &VoucherCard::unlinkRequested, this, &VoucherCardGrid::unlinkRequested);
    connect(card, &VoucherCard::projectLinkClicked, this, &VoucherCardGrid::projectLinkClicked);
    connect(card, &VoucherCard::txLinkClicked, this, &VoucherCardGrid::txLinkClicked);
    return card;
}

void VoucherCardGrid::orderTabs()
{
    QWidget* before = this;
    for (const VoucherCard* card : m_shown) {
        for (QWidget* stop : card->tabStops()) {
            setTabOrder(before, stop);
            before = stop;
        }
    }
}

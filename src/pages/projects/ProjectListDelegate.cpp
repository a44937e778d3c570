#include "pages/projects/ProjectListDelegate.h"

#include "core/Codes.h"
#include "pages/projects/ProjectListModel.h"
#include "theme/Theme.h"
#include "widgets/Painting.h"

#include <QPainter>

namespace {

constexpr int rowHeight = 40;
constexpr int statusPixels = 12;

// In the order of ProjectStatus.
constexpr auto statusTokens = std::to_array<Token>(
    { Token::InfoText, Token::SuccessText, Token::TextSecondary, Token::TextSecondary });

} // namespace

void ProjectListDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    paintGround(painter, ground);

    const auto status
        = static_cast<ProjectStatus>(index.data(ProjectListModel::StatusRole).toInt());
    const QString label = labelOf(status);
    const QRect line = option.rect.adjusted(padding, 0, -padding, 0);
    const QFont small = Painting::sized(option.font, statusPixels);
    const int labelWidth = QFontMetrics(small).horizontalAdvance(label);

    painter->save();
    painter->setFont(small);
    painter->setPen(Theme::instance().color(statusTokens.at(static_cast<std::size_t>(status))));
    painter->drawText(line, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, label);
    painter->setFont(option.font);
    painter->setPen(Theme::instance().color(Token::TextPrimary));
    const QRect nameRect = line.adjusted(0, 0, -labelWidth - padding, 0);
    const QString name = index.data().toString().simplified();
    painter->drawText(nameRect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
        option.fontMetrics.elidedText(name, Qt::ElideRight, nameRect.width()));
    painter->restore();
}

QSize ProjectListDelegate::sizeHint(
    const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    return { RowDelegate::sizeHint(option, index).width(), rowHeight };
}

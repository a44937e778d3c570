#include "pages/vouchers/VoucherCard.h"

#include "core/TextRules.h"
#include "pages/vouchers/VoucherThumbnail.h"
#include "services/vouchers/VoucherAssets.h"
#include "theme/Theme.h"
#include "widgets/ButtonRole.h"
#include "widgets/ElidedLabel.h"
#include "widgets/LinkLabel.h"
#include "widgets/TextRole.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 12;
constexpr int gap = 12;
constexpr int linkLines = 2;
constexpr int shortestName = 60;

const QString projectScheme = u"project:"_s;
const QString txScheme = u"tx:"_s;

QString projectAnchor(const VoucherCardData::Target& project, const QString& shownName)
{
    return u"<a href='project:%1' style='color:%2;'>%3</a>"_s.arg(
        QString::number(project.id), Theme::instance().hex(Token::Link), shownName.toHtmlEscaped());
}

QString txAnchor(const QList<qint64>& ids)
{
    const QString more = ids.size() > 1 ? u" 等%1笔"_s.arg(ids.size()) : QString();
    return u"<a href='tx:%1' style='color:%2;'>流水#%1%3</a>"_s.arg(
        QString::number(ids.first()), Theme::instance().hex(Token::Link), more);
}

QString coloured(Token token, const QString& text)
{
    return u"<span style='color:%1;'>%2</span>"_s.arg(Theme::instance().hex(token), text);
}

} // namespace

VoucherCard::VoucherCard(QWidget* parent)
    : QFrame(parent)
{
    setObjectName(u"VoucherCard"_s);
    setFixedHeight(cardHeight);
    m_thumbnail = new VoucherThumbnail(this);
    connect(m_thumbnail, &VoucherThumbnail::clicked, this,
        [this] { emit quickPreviewRequested(voucherId()); });

    auto* top = new QHBoxLayout;
    top->setSpacing(gap);
    top->addWidget(m_thumbnail, 0, Qt::AlignTop);
    top->addWidget(buildTexts(), 1);
    auto* line = new QHBoxLayout;
    line->setSpacing(0);
    addButton(line, u"预览"_s, &VoucherCard::previewRequested);
    addButton(line, u"文件夹"_s, &VoucherCard::folderRequested);
    addButton(line, u"编辑"_s, &VoucherCard::editRequested);
    addButton(line, u"删除"_s, &VoucherCard::deleteRequested);
    addButton(line, u"移除关联"_s, &VoucherCard::unlinkRequested);
    line->addStretch();

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, 4);
    column->setSpacing(8);
    column->addLayout(top);
    column->addLayout(line);
    connect(&Theme::instance(), &Theme::changed, this, &VoucherCard::showLinks);
}

QWidget* VoucherCard::buildTexts()
{
    auto* texts = new QWidget(this);
    m_name = new ElidedLabel(texts);
    m_name->setObjectName(u"name"_s);
    setTextRole(m_name, TextRole::SectionTitle);
    m_meta = new QLabel(texts);
    m_meta->setObjectName(u"meta"_s);
    m_meta->setTextFormat(Qt::PlainText);
    setTextRole(m_meta, TextRole::Hint);
    m_links = new LinkLabel(texts);
    m_links->setObjectName(u"links"_s);
    m_links->setTextFormat(Qt::RichText);
    m_links->setWordWrap(true);
    m_links->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setTextRole(m_links, TextRole::Hint);
    m_links->ensurePolished();
    m_links->setFixedHeight(linkLines * m_links->fontMetrics().lineSpacing() + 2);
    connect(m_links, &QLabel::linkActivated, this, &VoucherCard::onLinkActivated);

    auto* column = new QVBoxLayout(texts);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addWidget(m_name);
    column->addWidget(m_meta);
    column->addWidget(m_links);
    column->addStretch();
    return texts;
}

void VoucherCard::addButton(QLayout* line, const QString& text, Request request)
{
    QPushButton* button = makeButton(text, ButtonRole::Link, this);
    connect(button, &QPushButton::clicked, this,
        [this, request] { emit(this->*request)(voucherId()); });
    line->addWidget(button);
    m_buttons += button;
}

void VoucherCard::showVoucher(const VoucherCardData& voucherData)
{
    m_data = voucherData;
    const Voucher& voucher = m_data.voucher;
    m_thumbnail->setFile(
        voucher.storedPath.isEmpty() ? QString() : VoucherAssets::existingFile(voucher.storedPath));
    m_thumbnail->setAccessibleName(u"快速预览 %1"_s.arg(voucher.name));
    setAccessibleName(voucher.name);
    m_name->setText(voucher.name);
    m_meta->setText(u"%1 · %2"_s.arg(labelOf(voucher.voucherType),
        voucher.voucherDate.isValid() ? TextRules::dateText(voucher.voucherDate) : u"无日期"_s));
    for (QPushButton* button : m_buttons)
        button->setAccessibleName(u"%1 %2"_s.arg(button->text(), voucher.name));
    m_buttons.last()->setEnabled(!m_data.isUnlinked());
    showLinks();
}

void VoucherCard::showLinks()
{
    // Long names of projects are cut, so that each of several links has its place.
    const int room = linkLines * (narrowest - 2 * margin - VoucherThumbnail::side - gap);
    const auto anchorCount
        = static_cast<int>(m_data.projects.size()) + (m_data.transactionIds.isEmpty() ? 0 : 1);
    const int perAnchor
        = std::max(shortestName, room / std::max(1, anchorCount) - 2 * shortestName / 3);

    QStringList anchors;
    for (const auto& project : m_data.projects)
        anchors += projectAnchor(
            project, m_links->fontMetrics().elidedText(project.name, Qt::ElideRight, perAnchor));
    if (!m_data.transactionIds.isEmpty())
        anchors += txAnchor(m_data.transactionIds);

    QString text = anchors.join(u"、"_s);
    if (!m_data.linksKnown)
        text = coloured(Token::DangerText, u"读取失败"_s);
    else if (m_data.isUnlinked())
        text = coloured(Token::WarningText, u"未关联"_s);
    else if (anchors.isEmpty())
        text = u"—"_s; // linked to contracts alone, which the tool tip names
    m_links->setText(u"关联：%1"_s.arg(text));
    m_links->setTextInteractionFlags(
        anchors.isEmpty() ? Qt::NoTextInteraction : Qt::TextBrowserInteraction);
    const QString summary = VoucherLinkSummaries::text(m_data);
    m_links->setToolTip(Qt::convertFromPlainText(summary));
    m_links->setAccessibleName(u"关联：%1"_s.arg(summary));
}

void VoucherCard::onLinkActivated(const QString& href)
{
    if (href.startsWith(projectScheme))
        emit projectLinkClicked(href.sliced(projectScheme.size()).toLongLong());
    else if (href.startsWith(txScheme))
        emit txLinkClicked(href.sliced(txScheme.size()).toLongLong());
}

void VoucherCard::setUnlinkHint(const QString& hint)
{
    m_buttons.last()->setToolTip(hint);
}

void VoucherCard::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Delete))
        emit deleteRequested(voucherId());
    else
        QFrame::keyPressEvent(event);
}

QList<QWidget*> VoucherCard::tabStops() const
{
    QList<QWidget*> stops { m_thumbnail };
    if (m_links->focusPolicy() & Qt::TabFocus)
        stops += m_links;
    for (QPushButton* button : m_buttons) {
        if (button->isEnabled())
            stops += button;
    }
    return stops;
}

#include "dialogs/preview/VoucherPreview.h"

#include "core/Background.h"
#include "core/TextRules.h"
#include "services/FileRules.h"
#include "services/vouchers/VoucherAssets.h"
#include "services/vouchers/VoucherFiles.h"
#include "services/vouchers/VoucherService.h"
#include "widgets/ButtonRole.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FileView.h"
#include "widgets/TextRole.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize firstSize(1080, 760);
constexpr qreal shareOfWindow = 0.94;

QString metaOf(const Voucher& voucher)
{
    QStringList parts { labelOf(voucher.voucherType),
        voucher.voucherDate.isValid() ? TextRules::dateText(voucher.voucherDate) : u"无日期"_s,
        FileRules::formatFileSize(voucher.fileSize) };
    if (!voucher.originalFileName.isEmpty())
        parts += u"原文件名 "_s + TextRules::withoutDirectionMarks(voucher.originalFileName);
    return parts.join(u" · "_s);
}

QString digestText(const QString& stored)
{
    // A damaged row may hold anything, of any length.
    constexpr qsizetype whole = 64;
    if (stored.isEmpty())
        return u"未记录"_s;
    return stored.size() > whole ? stored.first(whole) + u'…' : stored;
}

QLabel* makeHint(const QString& objectName, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(objectName);
    label->setTextFormat(Qt::PlainText);
    setTextRole(label, TextRole::Hint);
    return label;
}

} // namespace

VoucherPreview::VoucherPreview(const QList<Voucher>& vouchers, qsizetype position, QWidget* parent)
    : QDialog(parent)
    , m_vouchers(vouchers)
    , m_view(new FileView(this))
{
    setObjectName(u"VoucherPreview"_s);
    setWindowTitle(u"凭证快速预览"_s);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(buildHead());
    column->addWidget(m_view, 1);
    column->addWidget(buildBar());
    addKeys();
    connect(m_view, &FileView::changed, this, &VoucherPreview::onViewChanged);
    connect(&m_hashing, &QFutureWatcherBase::finished, this, &VoucherPreview::showCheck);
    resize(
        parent ? (parent->window()->size() * shareOfWindow).boundedTo({ 1600, 1200 }) : firstSize);
    m_view->setFocus();
    showAt(position);
}

VoucherPreview::~VoucherPreview()
{
    m_hashing.cancel();
}

QWidget* VoucherPreview::buildHead()
{
    auto* head = new QWidget(this);
    m_name = new ElidedLabel(head);
    m_name->setObjectName(u"previewName"_s);
    setTextRole(m_name, TextRole::CardTitle);
    m_meta = new ElidedLabel(head);
    m_meta->setObjectName(u"previewMeta"_s);
    setTextRole(m_meta, TextRole::Hint);
    m_hash = makeHint(u"previewHash"_s, head);
    m_hash->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_check = makeHint(u"previewCheck"_s, head);

    auto* hashLine = new QHBoxLayout;
    hashLine->setSpacing(8);
    hashLine->addWidget(m_hash);
    hashLine->addWidget(m_check);
    hashLine->addStretch();
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(m_name);
    texts->addWidget(m_meta);
    texts->addLayout(hashLine);
    auto* line = new QHBoxLayout(head);
    line->setContentsMargins(24, 12, 24, 12);
    line->setSpacing(16);
    line->addLayout(texts, 1);
    addButton(line, u"用默认程序打开"_s, Qt::CTRL | Qt::Key_O, &VoucherPreview::openInDesktop);
    return head;
}

QWidget* VoucherPreview::buildBar()
{
    auto* bar = new QFrame(this);
    bar->setObjectName(u"DialogFooter"_s);
    auto* line = new QHBoxLayout(bar);
    line->setContentsMargins(24, 12, 24, 12);
    line->setSpacing(8);
    m_previous = addButton(line, u"上一张"_s, Qt::Key_Left, &VoucherPreview::showPrevious);
    m_next = addButton(line, u"下一张"_s, Qt::Key_Right, &VoucherPreview::showNext);
    line->addWidget(m_place = makeHint(u"previewPlace"_s, bar));
    line->addStretch();
    m_previousPage
        = addButton(line, u"上一页"_s, Qt::Key_PageUp, &VoucherPreview::showPreviousPage);
    line->addWidget(m_pages = makeHint(u"previewPages"_s, bar));
    m_nextPage = addButton(line, u"下一页"_s, Qt::Key_PageDown, &VoucherPreview::showNextPage);
    line->addStretch();
    m_zoomButtons += addButton(line, u"缩小"_s, QKeySequence::ZoomOut, &VoucherPreview::zoomOut);
    line->addWidget(m_zoom = makeHint(u"previewZoom"_s, bar));
    m_zoom->setAlignment(Qt::AlignCenter);
    m_zoom->ensurePolished();
    m_zoom->setMinimumWidth(m_zoom->fontMetrics().horizontalAdvance(u"1600%"_s));
    m_zoomButtons += addButton(line, u"放大"_s, QKeySequence::ZoomIn, &VoucherPreview::zoomIn);
    m_zoomButtons
        += addButton(line, u"原始大小"_s, Qt::CTRL | Qt::Key_0, &VoucherPreview::showNatural);
    m_zoomButtons += addButton(line, u"适合页面"_s, Qt::CTRL | Qt::Key_1, &VoucherPreview::fitPage);
    m_zoomButtons
        += addButton(line, u"适合宽度"_s, Qt::CTRL | Qt::Key_2, &VoucherPreview::fitWidth);
    QPushButton* close = makeButton(u"关闭"_s, ButtonRole::Default, bar);
    close->setToolTip(u"Esc"_s);
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    line->addWidget(close);
    return bar;
}

QPushButton* VoucherPreview::addButton(
    QHBoxLayout* line, const QString& text, const QKeySequence& key, void (VoucherPreview::*act)())
{
    QPushButton* button = makeButton(text, ButtonRole::Default, this);
    button->setToolTip(key.toString(QKeySequence::NativeText));
    // Not the button's own: that one answers late, and loses keys that come fast.
    connect(new QShortcut(key, button), &QShortcut::activated, button, &QPushButton::click);
    connect(button, &QPushButton::clicked, this, act);
    line->addWidget(button);
    return button;
}

void VoucherPreview::addKeys()
{
    // The plus sign without Shift.
    auto* larger = new QShortcut(Qt::CTRL | Qt::Key_Equal, this);
    connect(larger, &QShortcut::activated, this, &VoucherPreview::zoomIn);
    // The key that opened the preview closes it.
    auto* leave = new QShortcut(Qt::Key_Space, m_view);
    leave->setContext(Qt::WidgetShortcut);
    connect(leave, &QShortcut::activated, this, &QDialog::reject);
}

void VoucherPreview::showAt(qsizetype position)
{
    if (position < 0 || position >= m_vouchers.size())
        return;
    m_position = position;
    const Voucher& voucher = m_vouchers.at(position);
    const QString path = VoucherAssets::existingFile(voucher.storedPath);
    m_name->setText(voucher.name);
    m_meta->setText(metaOf(voucher));
    m_hash->setText(u"SHA-256：%1"_s.arg(digestText(voucher.sha256)));
    m_place->setText(u"第 %1 张，共 %2 张"_s.arg(
        QString::number(position + 1), QString::number(m_vouchers.size())));
    // A button that goes out of use would hand the keyboard to any other.
    const bool isFirst = position == 0;
    const bool isLast = position + 1 == m_vouchers.size();
    if ((isFirst && m_previous->hasFocus()) || (isLast && m_next->hasFocus()))
        m_view->setFocus();
    m_previous->setEnabled(!isFirst);
    m_next->setEnabled(!isLast);
    m_view->setAccessibleName(u"凭证内容 %1"_s.arg(voucher.name));
    m_view->showFile(path);
    checkFile(path);
}

void VoucherPreview::checkFile(const QString& path)
{
    m_hashing.cancel();
    m_check->clear();
    if (!path.isEmpty() && !m_vouchers.at(m_position).sha256.isEmpty())
        m_hashing.setFuture(inBackground([path] { return VoucherService::computeSha256(path); }));
}

void VoucherPreview::showCheck()
{
    if (m_hashing.isCanceled() || m_hashing.future().resultCount() == 0)
        return;
    const QString found = m_hashing.result();
    const bool same = found == m_vouchers.at(m_position).sha256;
    setTextRole(m_check, same ? TextRole::Success : TextRole::Danger);
    if (same)
        m_check->setText(u"✓ 与归档时一致"_s);
    else
        m_check->setText(
            found.isEmpty() ? u"文件读取失败，未能核对"_s : u"✗ 与归档时不一致，文件可能被改动"_s);
}

void VoucherPreview::onViewChanged()
{
    const int pages = m_view->pageCount();
    const int page = m_view->page();
    const bool several = pages > 1;
    if (!several && (m_previousPage->hasFocus() || m_nextPage->hasFocus()))
        m_view->setFocus();
    m_previousPage->setVisible(several);
    m_nextPage->setVisible(several);
    m_previousPage->setEnabled(page > 0);
    m_nextPage->setEnabled(page + 1 < pages);
    m_pages->setVisible(several);
    m_pages->setText(
        u"第 %1 页，共 %2 页"_s.arg(QString::number(page + 1), QString::number(pages)));
    const bool shown = m_view->hasPicture();
    for (QPushButton* button : m_zoomButtons)
        button->setEnabled(shown);
    m_zoom->setText(shown ? u"%1%"_s.arg(qRound(m_view->factor() * 100)) : QString());
}

void VoucherPreview::showPreviousPage()
{
    m_view->setPage(m_view->page() - 1);
}

void VoucherPreview::showNextPage()
{
    m_view->setPage(m_view->page() + 1);
}

void VoucherPreview::zoomIn()
{
    m_view->zoomIn();
}

void VoucherPreview::zoomOut()
{
    m_view->zoomOut();
}

void VoucherPreview::showNatural()
{
    m_view->setFactor(1);
}

void VoucherPreview::fitPage()
{
    m_view->setFit(PageZoom::Fit::Page);
}

void VoucherPreview::fitWidth()
{
    m_view->setFit(PageZoom::Fit::Width);
}

void VoucherPreview::openInDesktop()
{
    VoucherFiles::openVoucherFile(this, shownId());
}

#include "dialogs/vouchers/VoucherQueuePanel.h"

#include "dialogs/vouchers/QueuedFileDelegate.h"
#include "dialogs/vouchers/VoucherQueueModel.h"
#include "services/FileRules.h"
#include "widgets/BusyNotice.h"
#include "widgets/ButtonRole.h"
#include "widgets/EmptyState.h"
#include "widgets/StartFolder.h"
#include "widgets/ThumbnailPainter.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QListView>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

// Less than this is read before a notice could be seen.
constexpr qint64 noticeableBytes = qint64(8) * 1024 * 1024;

bool takesTime(const QStringList& paths)
{
    qint64 bytes = 0;
    for (const QString& path : paths)
        bytes += std::min(QFileInfo(path).size(), FileRules::maxFileSize);
    return bytes > noticeableBytes;
}

} // namespace

VoucherQueuePanel::VoucherQueuePanel(QWidget* parent)
    : QWidget(parent)
    , m_model(new VoucherQueueModel(this))
    , m_choose(makeButton(u"选择文件…（可多选）"_s, ButtonRole::Default, this))
    , m_remove(makeButton(u"移出队列"_s, ButtonRole::Default, this))
    , m_stack(new QStackedWidget(this))
    , m_list(new QListView(m_stack))
{
    m_list->setObjectName(u"voucherQueue"_s);
    m_list->setAccessibleName(u"待入库文件"_s);
    m_list->setModel(m_model);
    m_list->setItemDelegate(new QueuedFileDelegate(m_model, m_list));
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setUniformItemSizes(true);
    m_list->installEventFilter(this);
    ThumbnailPainter::follow(m_list);
    buildLayout();
    connect(m_choose, &QPushButton::clicked, this, &VoucherQueuePanel::onChooseFiles);
    connect(m_remove, &QPushButton::clicked, this, &VoucherQueuePanel::removeSelected);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
        &VoucherQueuePanel::update);
    update();
}

void VoucherQueuePanel::buildLayout()
{
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(m_choose);
    buttons->addWidget(m_remove);
    buttons->addStretch();
    m_stack->addWidget(m_list);
    m_stack->addWidget(buildDropZone());
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addLayout(buttons);
    column->addWidget(m_stack, 1);
}

QWidget* VoucherQueuePanel::buildDropZone()
{
    auto* zone = new QFrame(m_stack);
    zone->setObjectName(u"DropZone"_s);
    auto* layout = new QVBoxLayout(zone);
    layout->addWidget(new EmptyState(u"upload"_s, u"把文件拖到这里"_s,
        u"也可以点「选择文件…」，或按 Ctrl+V 粘贴截图和复制的文件"_s, zone));
    return zone;
}

const QList<QueuedFile>& VoucherQueuePanel::files() const
{
    return m_model->files();
}

qsizetype VoucherQueuePanel::validCount() const
{
    return m_model->validCount();
}

void VoucherQueuePanel::onChooseFiles()
{
    static QString lastFolder;
    const QStringList paths = QFileDialog::getOpenFileNames(this, u"选择凭证文件"_s,
        StartFolder::lastOrDocuments(lastFolder), FileRules::fileDialogFilter());
    if (paths.isEmpty())
        return;
    lastFolder = QFileInfo(paths.first()).absolutePath();
    add(paths);
}

void VoucherQueuePanel::add(const QStringList& paths)
{
    if (paths.isEmpty())
        return;
    std::optional<BusyNotice> notice;
    if (takesTime(paths))
        notice.emplace(window(), u"正在读取文件…"_s, BusyNotice::Cancel::Allowed);
    for (qsizetype i = 0; i < paths.size(); ++i) {
        if (notice) {
            notice->setProgress(i, paths.size());
            if (notice->isCancelled())
                break;
        }
        if (!m_model->contains(QFileInfo(paths.at(i)).absoluteFilePath()))
            m_model->append(VoucherQueue::inspect(paths.at(i)));
    }
    m_list->scrollToBottom();
    update();
    emit changed();
}

void VoucherQueuePanel::removePaths(const QStringList& paths)
{
    m_model->removePaths(paths);
    update();
    emit changed();
}

void VoucherQueuePanel::focusChooser()
{
    m_choose->setFocus();
}

bool VoucherQueuePanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_list || event->type() != QEvent::KeyPress
        || !static_cast<QKeyEvent*>(event)->matches(QKeySequence::Delete))
        return false;
    removeSelected();
    return true;
}

void VoucherQueuePanel::removeSelected()
{
    QList<int> rows;
    for (const QModelIndex& index : m_list->selectionModel()->selectedIndexes())
        rows += index.row();
    if (rows.isEmpty())
        return;
    m_model->removeRowsAt(rows);
    // What took the place of the first one is next, so that the key can be pressed again.
    const int next = std::min(*std::min_element(rows.begin(), rows.end()), m_model->rowCount() - 1);
    if (next >= 0)
        m_list->setCurrentIndex(m_model->index(next));
    update();
    if (next < 0)
        focusChooser();
    emit changed();
}

void VoucherQueuePanel::update()
{
    m_stack->setCurrentIndex(m_model->rowCount() > 0 ? 0 : 1);
    m_remove->setEnabled(m_list->selectionModel()->hasSelection());
}

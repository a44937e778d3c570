#include "dialogs/vouchers/VoucherAddDialog.h"

#include "dialogs/RiskNotice.h"
#include "dialogs/vouchers/VoucherFields.h"
#include "dialogs/vouchers/VoucherLinkFields.h"
#include "dialogs/vouchers/VoucherQueuePanel.h"
#include "services/risk/RiskService.h"
#include "services/vouchers/VoucherRules.h"
#include "widgets/BusyNotice.h"
#include "widgets/Card.h"
#include "widgets/FileIntake.h"
#include "widgets/FormRows.h"
#include "widgets/MessageBox.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

// The name is taken from the first file that will be archived.
QString firstName(const QList<QueuedFile>& files)
{
    if (files.isEmpty())
        return {};
    const auto valid = std::find_if(
        files.begin(), files.end(), [](const QueuedFile& file) { return file.isValid(); });
    return (valid != files.end() ? *valid : files.first()).defaultName();
}

void tell(QWidget* parent, const VoucherBatch::Notice& notice)
{
    switch (notice.level) {
    case NoticeLevel::Info:
        return MessageBox::info(parent, notice.title, notice.text);
    case NoticeLevel::Warning:
        return MessageBox::warn(parent, notice.title, notice.text);
    case NoticeLevel::Danger:
        return MessageBox::critical(parent, notice.title, notice.text);
    }
}

} // namespace

VoucherAddDialog::VoucherAddDialog(const Preset& preset, QWidget* parent)
    : FormDialog(u"添加凭证"_s, parent)
    , m_queue(new VoucherQueuePanel(this))
    , m_fields(new VoucherFields(this))
    , m_links(new VoucherLinkFields(this))
{
    setObjectName(u"VoucherAddDialog"_s);
    auto* columns = new QHBoxLayout;
    columns->setSpacing(16);
    columns->addWidget(buildQueue(), 1);
    columns->addWidget(buildFields(), 1);
    body()->addLayout(columns, 1);

    addRejectButton(u"取消"_s);
    connect(
        addPrimaryButton(u"保存入库"_s), &QPushButton::clicked, this, &VoucherAddDialog::onSave);
    connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated, this,
        &VoucherAddDialog::onSave);
    connect(new FileIntake(this), &FileIntake::offered, m_queue, &VoucherQueuePanel::add);
    connect(m_queue, &VoucherQueuePanel::changed, this, &VoucherAddDialog::onQueueChanged);

    m_fields->show(
        { .voucherType = VoucherType::BankReceipt, .voucherDate = QDate::currentDate() });
    m_links->show(preset.projectId, preset.transactionIds);
    m_queue->add(preset.files);
    if (preset.files.isEmpty())
        m_queue->focusChooser();
    else
        m_fields->focus(VoucherRules::Field::Name);
    resize(1000, 640);
}

QWidget* VoucherAddDialog::buildQueue()
{
    auto* card = new Card(u"① 选择文件（JPG/JPEG/PNG/BMP/PDF，单个 ≤20MB）"_s, this);
    card->body()->addWidget(m_queue, 1);
    return card;
}

QWidget* VoucherAddDialog::buildFields()
{
    auto* column = new QWidget(this);
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(16);
    auto* description = new Card(u"② 凭证信息（多文件批量入库时名称自动加序号）"_s, column);
    auto* rows = new FormRows;
    m_fields->addTo(rows, Required::Trailing);
    m_fields->nameEdit()->setPlaceholderText(u"必填，默认取文件名（去后缀）"_s);
    description->body()->addLayout(rows);
    layout->addWidget(description);
    auto* links = new Card(u"③ 关联（可不关联，之后仍可补）"_s, column);
    links->body()->addWidget(m_links, 1);
    layout->addWidget(links, 1);
    return column;
}

void VoucherAddDialog::onQueueChanged()
{
    QLineEdit* edit = m_fields->nameEdit();
    const QString name = edit->text().trimmed();
    if (!name.isEmpty() && name != m_givenName)
        return;
    m_givenName = firstName(m_queue->files());
    edit->setText(m_givenName);
}

bool VoucherAddDialog::hasUnsavedInput() const
{
    const VoucherDescription description = m_fields->edited();
    return !m_queue->files().isEmpty() || !description.note.isEmpty() || m_links->isChanged()
        || (m_importedIds.isEmpty() && !description.name.isEmpty());
}

void VoucherAddDialog::done(int result)
{
    // The caller has to show what is in the archive by now, however the dialog ends.
    FormDialog::done(m_importedIds.isEmpty() ? result : Accepted);
}

void VoucherAddDialog::onSave()
{
    const VoucherDescription description = m_fields->edited();
    if (const auto problem = VoucherRules::problemOfImport(m_queue->validCount(), description)) {
        MessageBox::warn(this, problem->title, problem->text);
        if (problem->field == VoucherRules::Field::Files)
            m_queue->focusChooser();
        else
            m_fields->focus(problem->field);
        return;
    }
    const VoucherBatch::Outcome outcome = import(description);
    m_importedIds += outcome.voucherIds;
    // The files that are left belong to the same name.
    m_givenName.clear();
    m_queue->removePaths(outcome.archivedPaths);
    tell(this, VoucherBatch::noticeOf(outcome));
    if (!m_links->entryIds().isEmpty())
        RiskNotice::warnIfBehind(this);
    if (outcome.failures.isEmpty() && outcome.untried == 0)
        accept();
}

VoucherBatch::Outcome VoucherAddDialog::import(const VoucherDescription& description)
{
    const VoucherBatch::Order order { m_queue->files(), description, m_links->projectId(),
        m_links->entryIds() };
    std::optional<BusyNotice> notice;
    if (m_queue->validCount() > 1
        // Each linked entry costs an evaluation of the ledger.
        || RiskService::takesNoticeablyLong(order.transactionIds.size()))
        notice.emplace(this, u"正在入库…"_s, BusyNotice::Cancel::Allowed);
    return VoucherBatch::run(order, [&](qsizetype done, qsizetype total) {
        if (!notice)
            return true;
        notice->setProgress(done, total);
        return !notice->isCancelled();
    });
}

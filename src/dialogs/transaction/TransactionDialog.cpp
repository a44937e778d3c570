#include "dialogs/transaction/TransactionDialog.h"

#include "db/TransactionDao.h"
#include "dialogs/pickers/VoucherPickerDialog.h"
#include "dialogs/transaction/AttachedVouchers.h"
#include "dialogs/transaction/EntryForm.h"
#include "dialogs/transaction/RiskPreviewPanel.h"
#include "dialogs/vouchers/VoucherAddDialog.h"
#include "services/entries/EntryService.h"
#include "services/risk/RiskService.h"
#include "widgets/BusyNotice.h"
#include "widgets/FileIntake.h"
#include "widgets/MessageBox.h"
#include "widgets/SectionTitle.h"

#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QShowEvent>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize usualSize { 940, 690 };
constexpr int footerHeight = 57;

// Of the screen's height, for the title bar and some of the window behind.
constexpr int spared = 100;

Transaction freshEntry()
{
    Transaction entry;
    entry.transDate = QDate::currentDate();
    entry.category = Category::BusinessIncome;
    return entry;
}

} // namespace

TransactionDialog::TransactionDialog(
    const QString& title, const Transaction& entry, QWidget* parent)
    : FormDialog(title, parent)
    , m_entry(entry)
    , m_sections(new QScrollArea(this))
    , m_form(new EntryForm(this))
    , m_vouchers(new AttachedVouchers(this))
    , m_preview(new RiskPreviewPanel(this))
{
    setObjectName(u"TransactionDialog"_s);
    m_sections->setWidgetResizable(true);
    m_sections->setFocusPolicy(Qt::NoFocus);
    m_sections->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_sections->setWidget(buildSections());
    body()->setContentsMargins(0, 0, 0, 0);
    body()->addWidget(m_sections);
    buildButtons();

    m_form->showEntry(m_entry);
    m_entry = m_form->edited(m_entry);
    m_vouchers->showVouchersOf(m_entry.id);
    m_preview->showOverride(m_entry.riskManualOverride);
    connect(m_form, &EntryForm::changed, this, &TransactionDialog::updatePreview);
    connect(m_vouchers, &AttachedVouchers::changed, this, &TransactionDialog::updatePreview);
    connect(m_vouchers, &AttachedVouchers::archivedWanted, this,
        &TransactionDialog::onAddExistingVoucher);
    connect(m_vouchers, &AttachedVouchers::newWanted, this, [this] { onAddNewVoucher({}); });
    connect(new FileIntake(this), &FileIntake::offered, this, &TransactionDialog::onAddNewVoucher);
    updatePreview();
    m_form->focus(EntryRules::Field::Date);
    resize(usualSize);
}

TransactionDialog::TransactionDialog(qint64 id, QWidget* parent)
    : TransactionDialog(id > 0 ? u"编辑资金流水"_s : u"登记资金流水"_s,
        id > 0 ? TransactionDao().findById(id).value_or(Transaction()) : freshEntry(), parent)
{
    m_isLoaded = m_entry.id == id;
    if (id == 0)
        m_form->enableSuggestions();
}

TransactionDialog::TransactionDialog(const Transaction& pattern, QWidget* parent)
    : TransactionDialog(
        u"登记资金流水"_s, EntryRules::copyOf(pattern, QDate::currentDate()), parent)
{
}

QWidget* TransactionDialog::buildSections()
{
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(24, 16, 24, 16);
    column->setSpacing(12);
    const auto section = [&](const QString& title, QWidget* widget) {
        if (column->count() > 0)
            column->addSpacing(8);
        column->addWidget(new SectionTitle(title, content));
        column->addWidget(widget);
    };
    section(u"① 基本信息（标 * 为必填项）"_s, m_form);
    section(u"② 关联凭证（回单/发票/合同扫描件）"_s, m_vouchers);
    section(u"③ 风险预演（随填写内容即时更新，以保存后完整判定为准）"_s, m_preview);
    column->addStretch();
    return content;
}

void TransactionDialog::showEvent(QShowEvent* event)
{
    FormDialog::showEvent(event);
    if (event->spontaneous() || m_wasShown)
        return;
    m_wasShown = true;
    // So that the preview of an entry with many vouchers shows without scrolling where the screen
    // has room for it. Not earlier: the style has just given the fields their height.
    const int content = m_sections->widget()->sizeHint().height() + footerHeight;
    const int room = screen()->availableGeometry().height() - spared;
    if (content > height() && room > height())
        resize(width(), std::min(content, room));
}

void TransactionDialog::buildButtons()
{
    addRejectButton(u"取消"_s);
    QPushButton* save = addPrimaryButton(u"保存"_s);
    save->setToolTip(u"Ctrl+S 或 Ctrl+Enter"_s);
    connect(save, &QPushButton::clicked, this, &TransactionDialog::onSave);
    for (const QKeySequence& keys : { QKeySequence(QKeySequence::Save),
             QKeySequence(Qt::CTRL | Qt::Key_Return), QKeySequence(Qt::CTRL | Qt::Key_Enter) })
        connect(new QShortcut(keys, this), &QShortcut::activated, this, &TransactionDialog::onSave);
}

int TransactionDialog::exec()
{
    if (m_isLoaded)
        return FormDialog::exec();
    MessageBox::warn(parentWidget(), u"无法打开流水"_s, u"该流水可能已被删除。"_s);
    return Rejected;
}

bool TransactionDialog::hasUnsavedInput() const
{
    const AttachedVoucherModel& vouchers = m_vouchers->model();
    return m_form->edited(m_entry) != m_entry || !vouchers.addedIds().isEmpty()
        || !vouchers.removedIds().isEmpty() || m_importedVouchers > 0;
}

QString TransactionDialog::discardQuestion() const
{
    if (m_importedVouchers == 0)
        return FormDialog::discardQuestion();
    return u"%1\n刚才入库的 %2 个凭证会保留在凭证库中，但不会关联到本笔流水。"_s.arg(
        FormDialog::discardQuestion(), QString::number(m_importedVouchers));
}

void TransactionDialog::onSave()
{
    const Transaction edited = m_form->edited(m_entry);
    if (const auto problem = EntryRules::firstProblem(edited)) {
        MessageBox::warn(this, problem->title, problem->text);
        m_form->focus(problem->field);
        m_sections->ensureWidgetVisible(focusWidget());
        return;
    }
    EntryService::SaveResult result;
    {
        std::optional<BusyNotice> notice;
        if (RiskService::takesNoticeablyLong())
            notice.emplace(this, u"正在保存流水并重新判定全部风险，请稍候…"_s);
        const AttachedVoucherModel& vouchers = m_vouchers->model();
        result = EntryService::save(edited, vouchers.addedIds(), vouchers.removedIds());
    }
    if (!result.ok) {
        MessageBox::critical(this, u"保存失败"_s, result.message);
        return;
    }
    m_entry.id = result.entryId;
    accept();
}

void TransactionDialog::onAddExistingVoucher()
{
    VoucherPickerDialog picker(m_vouchers->model().keptIds(), this);
    if (picker.exec() == Accepted)
        m_vouchers->add(picker.selectedIds());
}

void TransactionDialog::onAddNewVoucher(const QStringList& files)
{
    VoucherAddDialog dialog(
        { .projectId = m_form->edited(m_entry).projectId.value_or(0), .files = files }, this);
    dialog.exec();
    // Also after a partial failure: what was archived belongs to this entry.
    const QList<qint64> imported = dialog.importedIds();
    m_importedVouchers += static_cast<int>(imported.size());
    m_vouchers->add(imported);
}

void TransactionDialog::updatePreview()
{
    const Transaction edited = m_form->edited(m_entry);
    const auto vouchers = static_cast<int>(m_vouchers->model().keptIds().size());
    m_preview->showPreview(riskPreview(RiskService().evaluateInstant(edited, vouchers),
        edited.category, !EntryRules::firstProblem(edited)));
}

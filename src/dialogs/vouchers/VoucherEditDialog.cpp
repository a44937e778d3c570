#include "dialogs/vouchers/VoucherEditDialog.h"

#include "db/ContractDao.h"
#include "db/LinkDao.h"
#include "db/ProjectDao.h"
#include "db/VoucherDao.h"
#include "dialogs/RiskNotice.h"
#include "dialogs/vouchers/VoucherFields.h"
#include "dialogs/vouchers/VoucherLinkFields.h"
#include "services/risk/RiskService.h"
#include "services/vouchers/VoucherRules.h"
#include "widgets/Banner.h"
#include "widgets/BusyNotice.h"
#include "widgets/Card.h"
#include "widgets/FormRows.h"
#include "widgets/MessageBox.h"
#include "widgets/TextRole.h"

#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

QString contractText(qint64 id)
{
    const std::optional<Contract> contract = ContractDao().findById(id);
    return contract ? u"合同「%1」"_s.arg(contract->name) : u"合同 #%1"_s.arg(id);
}

QString projectText(qint64 id)
{
    const std::optional<Project> project = ProjectDao().findById(id);
    return project ? u"项目「%1」"_s.arg(project->name) : u"项目 #%1"_s.arg(id);
}

bool isSame(const VoucherDescription& a, const VoucherDescription& b)
{
    return a.name == b.name && a.voucherType == b.voucherType && a.voucherDate == b.voucherDate
        && a.note == b.note;
}

} // namespace

VoucherEditDialog::VoucherEditDialog(qint64 voucherId, QWidget* parent)
    : FormDialog(u"编辑凭证"_s, parent)
    , m_voucherId(voucherId)
    , m_fields(new VoucherFields(this))
    , m_links(new VoucherLinkFields(this))
{
    setObjectName(u"VoucherEditDialog"_s);
    buildForm();
    if (!load())
        qWarning("Voucher %lld could not be read for editing", static_cast<long long>(voucherId));
    resize(640, 720);
}

void VoucherEditDialog::buildForm()
{
    auto* description = new Card(u"凭证信息"_s, this);
    auto* rows = new FormRows;
    m_fields->addTo(rows, Required::No);
    description->body()->addLayout(rows);
    body()->addWidget(description);

    auto* links = new Card(u"关联对象（项目至多一个，流水可多条）"_s, this);
    links->body()->addWidget(m_links, 1);
    body()->addWidget(links, 1);

    auto* note
        = new QLabel(u"说明：文件本体不可替换；如需更换文件，请删除本凭证后重新上传。"_s, this);
    note->setTextFormat(Qt::PlainText);
    note->setWordWrap(true);
    setTextRole(note, TextRole::Hint);
    body()->addWidget(note);

    addRejectButton(u"取消"_s);
    connect(addPrimaryButton(u"保存"_s), &QPushButton::clicked, this, &VoucherEditDialog::onSave);
    connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated, this,
        &VoucherEditDialog::onSave);
}

bool VoucherEditDialog::load()
{
    VoucherDao vouchers;
    const std::optional<Voucher> voucher = vouchers.findById(m_voucherId);
    if (!voucher) {
        m_loadProblem
            = vouchers.lastError().isEmpty() ? u"该凭证已被删除。"_s : vouchers.lastError();
        return false;
    }
    LinkDao links;
    const QList<EntityLink> found = links.linksBySource(SourceType::Voucher, m_voucherId);
    // Saving a form that does not know the links would drop them.
    if (!links.lastError().isEmpty()) {
        m_loadProblem = links.lastError();
        return false;
    }
    m_fields->show({ voucher->name, voucher->voucherType, voucher->voucherDate, voucher->note });
    m_shown = m_fields->edited();
    showLinks(found);
    return true;
}

void VoucherEditDialog::showLinks(const QList<EntityLink>& links)
{
    qint64 projectId = 0;
    QList<qint64> entryIds;
    QStringList dropped;
    for (const EntityLink& link : links) {
        if (link.targetType == TargetType::Transaction)
            entryIds += link.targetId;
        else if (link.targetType == TargetType::Contract)
            dropped += contractText(link.targetId);
        else if (projectId == 0)
            projectId = link.targetId;
        else
            dropped += projectText(link.targetId);
    }
    m_entriesBefore = QSet<qint64>(entryIds.begin(), entryIds.end());
    m_links->show(projectId, entryIds);
    if (!dropped.isEmpty())
        showRemark(dropped);
}

void VoucherEditDialog::showRemark(const QStringList& dropped)
{
    auto* remark = new Banner(BannerKind::Warning, this);
    remark->setObjectName(u"droppedLinks"_s);
    remark->setText(u"保存后，本凭证与以下对象的关联会被移除：%1。"_s.arg(dropped.join(u"、"_s)));
    body()->insertWidget(0, remark);
}

int VoucherEditDialog::exec()
{
    if (m_loadProblem.isEmpty())
        return FormDialog::exec();
    MessageBox::warn(parentWidget(), u"无法打开凭证"_s, m_loadProblem);
    return Rejected;
}

bool VoucherEditDialog::hasUnsavedInput() const
{
    return !isSame(m_fields->edited(), m_shown) || m_links->isChanged();
}

void VoucherEditDialog::onSave()
{
    if (!m_loadProblem.isEmpty())
        return;
    const VoucherDescription edited = m_fields->edited();
    if (const auto problem = VoucherRules::problemOfEdit(edited)) {
        MessageBox::warn(this, problem->title, problem->text);
        m_fields->focus(problem->field);
        return;
    }
    // Each entry that has the voucher or loses it costs an evaluation of the ledger.
    const QList<qint64> linked = m_links->entryIds();
    const QSet<qint64> affected = QSet<qint64>(linked.begin(), linked.end()) + m_entriesBefore;
    QString error;
    bool saved = false;
    {
        std::optional<BusyNotice> notice;
        if (RiskService::takesNoticeablyLong(affected.size()))
            notice.emplace(this, u"正在保存…"_s);
        saved = VoucherService::updateVoucher(
            m_voucherId, edited, m_links->projectId(), linked, &error);
    }
    if (!saved) {
        MessageBox::warn(this, u"保存失败"_s, VoucherRules::failedUpdateText(error));
        return;
    }
    if (!affected.isEmpty())
        RiskNotice::warnIfBehind(this);
    accept();
}

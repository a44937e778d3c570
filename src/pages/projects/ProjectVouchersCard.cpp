#include "pages/projects/ProjectVouchersCard.h"

#include "db/VoucherDao.h"
#include "dialogs/vouchers/VoucherAddDialog.h"
#include "pages/projects/VoucherTies.h"
#include "pages/vouchers/VoucherActions.h"
#include "pages/vouchers/VoucherCardGrid.h"
#include "services/projects/ProjectService.h"
#include "services/vouchers/VoucherFiles.h"
#include "widgets/Card.h"
#include "widgets/FileIntake.h"
#include "widgets/MessageBox.h"
#include "widgets/TextRole.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostRows = 3;

} // namespace

ProjectVouchersCard::ProjectVouchersCard(QWidget* parent)
    : QWidget(parent)
    , m_card(new Card(u"关联凭证（0）"_s, this))
    , m_empty(new QLabel(u"暂无关联凭证。可上传合同扫描件、回单、发票等。"_s, m_card))
{
    setObjectName(u"ProjectVouchersCard"_s);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_card);
    QPushButton* add = makeButton(u"＋ 添加凭证"_s, ButtonRole::Primary, m_card);
    add->setObjectName(u"addVoucher"_s);
    QPushButton* link = makeButton(u"关联已有凭证"_s, ButtonRole::Default, m_card);
    link->setObjectName(u"linkVouchers"_s);
    m_card->addHeadWidget(add);
    m_card->addHeadWidget(link);
    connect(add, &QPushButton::clicked, this, [this] { onAddVoucher({}); });
    connect(link, &QPushButton::clicked, this, &ProjectVouchersCard::onLinkExistingVoucher);

    setTextRole(m_empty, TextRole::Hint);
    m_card->body()->addWidget(m_empty);
    m_grid = new VoucherCardGrid(m_card);
    m_grid->setMostRows(mostRows);
    m_card->body()->addWidget(m_grid);
    connectCards();
    connect(new FileIntake(this), &FileIntake::offered, this, &ProjectVouchersCard::onAddVoucher);
}

void ProjectVouchersCard::connectCards()
{
    connect(m_grid, &VoucherCardGrid::previewRequested, this,
        [this](qint64 id) { VoucherFiles::openVoucherFile(this, id); });
    connect(m_grid, &VoucherCardGrid::quickPreviewRequested, this,
        [this](qint64 id) { VoucherActions::quickPreview(this, m_grid->vouchers(), id); });
    connect(m_grid, &VoucherCardGrid::folderRequested, this,
        [this](qint64 id) { VoucherFiles::showVoucherInFolder(this, id); });
    const auto act = [this](bool (*action)(QWidget*, const Voucher&)) {
        return [this, action](qint64 id) {
            const VoucherCardData* shown = m_grid->find(id);
            if (shown && action(this, Voucher(shown->voucher)))
                emit changed();
        };
    };
    connect(m_grid, &VoucherCardGrid::editRequested, this, act(&VoucherActions::edit));
    connect(m_grid, &VoucherCardGrid::deleteRequested, this, act(&VoucherActions::remove));
    connect(m_grid, &VoucherCardGrid::unlinkRequested, this, &ProjectVouchersCard::onUnlink);
    connect(
        m_grid, &VoucherCardGrid::projectLinkClicked, this, &ProjectVouchersCard::projectRequested);
    connect(m_grid, &VoucherCardGrid::txLinkClicked, this, &ProjectVouchersCard::entryRequested);
}

QString ProjectVouchersCard::showProject(qint64 projectId)
{
    m_projectId = projectId;
    VoucherDao vouchers;
    const QList<Voucher> found = vouchers.search({ .projectId = projectId, .keyword = {} });
    m_grid->setVouchers(VoucherLinkSummaries::of(found));
    m_grid->setVisible(!found.isEmpty());
    m_card->setTitle(u"关联凭证（%1）"_s.arg(found.size()));
    const bool failed = !vouchers.lastError().isEmpty();
    m_empty->setVisible(found.isEmpty() && !failed);
    return failed ? u"关联凭证读取失败：%1"_s.arg(vouchers.lastError()) : QString();
}

void ProjectVouchersCard::onAddVoucher(const QStringList& files)
{
    const VoucherAddDialog::Preset preset {
        .projectId = m_projectId, .transactionIds = {}, .files = files
    };
    if (VoucherAddDialog(preset, this).exec() == QDialog::Accepted)
        emit changed();
}

void ProjectVouchersCard::onLinkExistingVoucher()
{
    const QList<Voucher> tied = VoucherDao().search({ .projectId = m_projectId, .keyword = {} });
    if (VoucherTies::add(this, TargetType::Project, m_projectId, tied)
        == VoucherTies::Outcome::Written)
        emit changed();
}

void ProjectVouchersCard::onUnlink(qint64 voucherId)
{
    if (!MessageBox::ask(this, u"移除关联"_s,
            u"仅解除该凭证与本项目的关联，凭证文件仍保留在凭证归档库中。确认移除？"_s, u"移除"_s,
            u"取消"_s, ButtonRole::Danger))
        return;
    const auto result
        = ProjectService::unlinkVouchers(TargetType::Project, m_projectId, { voucherId });
    if (!result.ok)
        MessageBox::warn(this, u"移除失败"_s, result.message);
    emit changed();
}

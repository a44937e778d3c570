#include "dialogs/RestorePreviewDialog.h"

#include "core/TextRules.h"
#include "db/DocumentDao.h"
#include "db/ProfileDao.h"
#include "db/TransactionDao.h"
#include "db/VoucherDao.h"
#include "services/backup/BackupPreview.h"
#include "services/FileRules.h"
#include "widgets/Banner.h"
#include "widgets/TextRole.h"

#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int dialogWidth = 560;

struct ComparedRow {
    QString name;
    QString backup;
    QString present;
};

QString orDash(const QString& text)
{
    return TextRules::isBlank(text) ? u"—"_s : text;
}

const QString unreadable = u"无法读取"_s;

QString countText(const std::optional<int>& count)
{
    return count ? QString::number(*count) : unreadable;
}

// What cannot be read now is perhaps the reason to restore, and is not told as nothing.
QString presentText(const BaseDao& store, qint64 count)
{
    return store.lastError().isEmpty() ? QString::number(count) : unreadable;
}

qint64 countOf(const RiskLevelCounts& counts)
{
    return counts.high + counts.medium + counts.low + counts.normal;
}

QDate newestEntry()
{
    const QList<Transaction> newest = TransactionDao().search({ .limit = 1 });
    return newest.isEmpty() ? QDate() : newest.first().transDate;
}

QList<ComparedRow> rowsOf(const BackupPreview& preview)
{
    TransactionDao entryStore;
    const qint64 entries = countOf(entryStore.riskLevelCounts({}, {}));
    DocumentDao documentStore;
    const qsizetype documents = documentStore.listWithoutContent().size();
    VoucherDao voucherStore;
    const int vouchers = voucherStore.countAll();
    return {
        { u"备份时间"_s, orDash(preview.manifest.time), u"—"_s },
        { u"备份类型"_s, orDash(preview.manifest.kind), u"—"_s },
        { u"公司名称"_s, orDash(preview.companyName), orDash(ProfileDao().load().companyName) },
        { u"资金流水"_s, countText(preview.entries), presentText(entryStore, entries) },
        { u"最近一笔流水"_s, orDash(TextRules::dateText(preview.newestEntry)),
            orDash(TextRules::dateText(newestEntry())) },
        { u"凭证"_s,
            u"%1（文件 %2 个）"_s.arg(
                countText(preview.vouchers), QString::number(preview.voucherFiles)),
            presentText(voucherStore, vouchers) },
        { u"文书"_s, countText(preview.documents), presentText(documentStore, documents) },
        { u"大小"_s, FileRules::formatFileSize(preview.bytes), u"—"_s },
    };
}

QLabel* makeLabel(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QLabel* makeHeading(const QString& text, QWidget* parent)
{
    QLabel* label = makeLabel(text, parent);
    setTextRole(label, TextRole::SectionTitle);
    return label;
}

QLabel* makeValue(const QString& text, const QString& subject, QWidget* parent)
{
    QLabel* label = makeLabel(text, parent);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setAccessibleName(u"%1：%2"_s.arg(subject, text));
    return label;
}

} // namespace

RestorePreviewDialog::RestorePreviewDialog(
    const QString& folder, const BackupPreview& preview, QWidget* parent)
    : FormDialog(u"备份内容"_s, parent)
{
    setObjectName(u"RestorePreviewDialog"_s);
    body()->addWidget(makeHeading(u"所选备份目录"_s, this));
    body()->addWidget(makeValue(QDir::toNativeSeparators(folder), u"所选备份目录"_s, this));
    addWarnings(preview);
    addComparison(preview);
    body()->addStretch();

    addRejectButton(u"取消"_s);
    QPushButton* goOn = addPrimaryButton(u"继续恢复"_s);
    connect(goOn, &QPushButton::clicked, this, &QDialog::accept);
    goOn->setFocus();
    // The hint of wrapping texts counts lines of a narrower window.
    resize(dialogWidth, layout()->totalHeightForWidth(dialogWidth));
}

void RestorePreviewDialog::addWarnings(const BackupPreview& preview)
{
    for (const QString& warning : preview.warnings) {
        auto* banner = new Banner(BannerKind::Warning, this);
        banner->setText(warning);
        body()->addWidget(banner);
    }
}

void RestorePreviewDialog::addComparison(const BackupPreview& preview)
{
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(24);
    grid->setVerticalSpacing(8);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(2, 1);
    grid->addWidget(makeHeading(u"所选备份"_s, this), 0, 1);
    grid->addWidget(makeHeading(u"当前数据"_s, this), 0, 2);
    for (const ComparedRow& compared : rowsOf(preview)) {
        const int row = grid->rowCount();
        QLabel* name = makeLabel(compared.name, this);
        setTextRole(name, TextRole::Hint);
        grid->addWidget(name, row, 0);
        grid->addWidget(
            makeValue(compared.backup, u"%1（所选备份）"_s.arg(compared.name), this), row, 1);
        grid->addWidget(
            makeValue(compared.present, u"%1（当前数据）"_s.arg(compared.name), this), row, 2);
    }
    body()->addLayout(grid);
}

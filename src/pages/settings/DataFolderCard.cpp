#include "pages/settings/DataFolderCard.h"

#include "core/AppPaths.h"
#include "services/DesktopFiles.h"
#include "services/FileRules.h"
#include "services/FolderSize.h"
#include "widgets/ButtonRole.h"
#include "widgets/TextRole.h"

#include <QDir>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int stepMs = 8; // half a frame

} // namespace

DataFolderCard::DataFolderCard(QWidget* parent)
    : SettingsCard(u"数据目录"_s, parent)
    , m_path(makeValue())
    , m_layout(new QFormLayout)
{
    setHint(u"全部数据都在这个文件夹里，请勿手工移动、改名或删除其中的文件。"_s);
    QPushButton* open = makeButton(u"打开数据目录"_s, ButtonRole::Default, this);
    addHeadWidget(open);
    connect(open, &QPushButton::clicked, this,
        [this] { DesktopFiles::openFolder(this, AppPaths::dataDir()); });

    m_path->setObjectName(u"dataFolderPath"_s);
    m_layout->setHorizontalSpacing(24);
    m_layout->setVerticalSpacing(8);
    m_layout->setContentsMargins(0, 4, 0, 0);
    QLabel* name = makeText(u"位置"_s);
    setTextRole(name, TextRole::Hint);
    m_layout->addRow(name, m_path);
    const QString database = AppPaths::databasePath();
    addRow(u"数据库"_s, { database, database + u"-wal"_s });
    addRow(u"凭证文件"_s, { AppPaths::voucherAssetsDir() });
    addRow(u"生成的文书"_s, { AppPaths::exportsDir() });
    addRow(u"备份"_s, { AppPaths::backupsDir(), AppPaths::autoBackupBeforeRestoreDir() });
    body()->addLayout(m_layout);
    connect(&m_timer, &QTimer::timeout, this, &DataFolderCard::countOn);
}

DataFolderCard::~DataFolderCard() = default;

void DataFolderCard::addRow(const QString& name, const QStringList& paths)
{
    QLabel* label = makeText(name);
    setTextRole(label, TextRole::Hint);
    QLabel* size = makeValue();
    m_rows += { name, paths, size };
    m_layout->addRow(label, size);
}

void DataFolderCard::refresh()
{
    setValue(m_path, u"位置"_s, QDir::toNativeSeparators(AppPaths::dataDir()));
    m_current = 0;
    m_counter.reset();
    m_timer.start(0);
}

void DataFolderCard::countOn()
{
    if (m_current == m_rows.size()) {
        m_timer.stop();
        return;
    }
    const Row& row = m_rows.at(m_current);
    if (!m_counter)
        m_counter = std::make_unique<FolderSize>(row.paths);
    const bool complete = m_counter->advance(stepMs);
    showSize(row, complete);
    if (complete) {
        ++m_current;
        m_counter.reset();
    }
}

void DataFolderCard::showSize(const Row& row, bool complete)
{
    const QString text = u"%1（%2 个文件）"_s.arg(
        FileRules::formatFileSize(m_counter->bytes()), QString::number(m_counter->files()));
    setValue(row.size, row.name, complete ? text : u"正在统计… "_s + text);
}

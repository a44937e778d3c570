#include "pages/documents/DocumentActions.h"

#include "db/DocumentDao.h"
#include "db/LinkDao.h"
#include "dialogs/RiskNotice.h"
#include "services/DesktopFiles.h"
#include "services/documents/DocumentFiles.h"
#include "services/documents/DocumentPdf.h"
#include "services/documents/DocumentQuestions.h"
#include "services/documents/DocumentService.h"
#include "widgets/BusyNotice.h"
#include "widgets/MessageBox.h"

using namespace Qt::StringLiterals;

namespace DocumentActions {

namespace {

// The stored document; nothing after the user was told why there is none.
std::optional<DocumentRecord> find(QWidget* parent, qint64 id)
{
    DocumentDao documents;
    auto record = documents.findById(id);
    if (!record && documents.lastError().isEmpty())
        MessageBox::warn(parent, u"文书不存在"_s, u"该文书已被删除。"_s);
    else if (!record)
        MessageBox::warn(
            parent, u"读取失败"_s, u"文书记录读取失败：%1"_s.arg(documents.lastError()));
    return record;
}

// The path of the PDF, written again when the user wishes; empty when there is none to show.
QString existingFile(QWidget* parent, qint64 id)
{
    const auto record = find(parent, id);
    if (!record)
        return {};
    const QString path = DocumentFiles::documentFile(*record);
    if (DocumentFiles::isThere(*record))
        return path;
    if (!MessageBox::ask(
            parent, u"文件缺失"_s, DocumentQuestions::restoreFile(*record, path), u"重新写出"_s))
        return {};
    const DocumentResult result = DocumentService().restoreFile(id);
    if (!result.ok)
        MessageBox::warn(parent, u"无法写出文书"_s, result.error);
    return result.ok ? result.filePath : QString();
}

// Whoever opens a document must not take another's page for it.
bool mayOpen(QWidget* parent, qint64 id, const QString& path)
{
    const auto record = DocumentDao().findById(id);
    return !record || DocumentPdf::isOf(path, record->contentHtml)
        || MessageBox::ask(parent, u"文件与存档不一致"_s,
            DocumentQuestions::openOther(*record, path), u"仍然打开"_s);
}

qsizetype coveredCount(qint64 id)
{
    return LinkDao().linksBySource(SourceType::Document, id).size();
}

// Runs the change under a notice, which is gone before a failure is told.
template <typename Change>
bool carryOut(QWidget* parent, const QString& notice, const QString& failure, const Change& change)
{
    DocumentResult result;
    {
        const BusyNotice shown(parent, notice);
        result = change();
    }
    if (!result.ok)
        MessageBox::warn(parent, failure, result.error);
    return result.ok;
}

} // namespace

void open(QWidget* parent, qint64 id)
{
    const QString path = existingFile(parent, id);
    if (!path.isEmpty() && mayOpen(parent, id, path))
        DesktopFiles::openFile(parent, path);
}

void showInFolder(QWidget* parent, qint64 id)
{
    const QString path = existingFile(parent, id);
    if (!path.isEmpty())
        DesktopFiles::showInFolder(parent, path);
}

void print(QWidget* parent, qint64 id)
{
    if (const auto record = find(parent, id))
        DocumentPdf::printHtml(record->contentHtml, parent);
}

bool regenerate(QWidget* parent, qint64 id)
{
    const auto record = find(parent, id);
    if (!record
        || !MessageBox::ask(parent, u"重新生成文书"_s, DocumentQuestions::regenerate(*record),
            u"重新生成"_s, u"取消"_s, ButtonRole::Danger))
        return false;
    return carryOut(parent, u"正在重新生成文书…"_s, u"无法重新生成"_s,
        [id] { return DocumentService().regenerate(id); });
}

bool remove(QWidget* parent, qint64 id)
{
    const auto record = find(parent, id);
    if (!record)
        return false;
    DocumentDao documents;
    const bool freed = DocumentQuestions::freesItsNumber(*record, documents.listWithoutContent());
    if (!MessageBox::ask(parent, u"删除文书"_s,
            DocumentQuestions::remove(*record, coveredCount(id), freed), u"删除"_s, u"取消"_s,
            ButtonRole::Danger))
        return false;
    const bool removed = carryOut(parent, u"正在删除文书…"_s, u"无法删除"_s,
        [id] { return DocumentService().deleteDocument(id); });
    if (removed)
        RiskNotice::warnIfBehind(parent);
    return removed;
}

} // namespace DocumentActions

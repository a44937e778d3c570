#include "services/documents/DocumentQuestions.h"

#include <QDir>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace DocumentQuestions {

namespace {

// "KYR-FD-2025-0003" is "KYR-FD-2025-" and 3.
constexpr qsizetype sequenceLength = 4;

QString seriesOf(const DocumentRecord& record)
{
    return record.docNo.chopped(std::min(sequenceLength, record.docNo.size()));
}

int sequenceOf(const DocumentRecord& record)
{
    return record.docNo.right(sequenceLength).toInt();
}

} // namespace

bool freesItsNumber(const DocumentRecord& record, const QList<DocumentRecord>& all)
{
    return std::none_of(all.begin(), all.end(), [&](const DocumentRecord& other) {
        return seriesOf(other) == seriesOf(record) && sequenceOf(other) > sequenceOf(record);
    });
}

QString regenerate(const DocumentRecord& record)
{
    return u"将按现在的公司档案和流水重写 %1「%2」，并覆盖原来的 PDF 文件；编号、标题和日期不变。"
           "\n\n已经签名的文书请勿重新生成：签名的纸质件会与存档内容不一致。"_s.arg(
               record.docNo, record.title);
}

QString remove(const DocumentRecord& record, qsizetype covered, bool freesNumber)
{
    QString text = u"将删除 %1「%2」的记录和 PDF 文件，无法恢复。已经签名的文书请勿删除。"_s.arg(
        record.docNo, record.title);
    if (covered > 0)
        text
            += u"\n\n它覆盖的 %1 笔流水将不再有书面决定，可能重新被标记为频繁往来。"_s.arg(covered);
    text += freesNumber ? u"\n\n编号 %1 会被下一份同类文书再次使用。"_s.arg(record.docNo)
                        : u"\n\n编号 %1 将空缺，不再使用。"_s.arg(record.docNo);
    return text;
}

QString restoreFile(const DocumentRecord& record, const QString& path)
{
    return u"%1 的 PDF 文件不存在：\n%2\n\n可以按存档的内容重新写出，编号和文字与原来相同。"_s.arg(
        record.docNo, QDir::toNativeSeparators(path));
}

QString openOther(const DocumentRecord& record, const QString& path)
{
    return u"%1 的 PDF 文件与存档的内容不同：\n%2\n\n它可能是签名后的扫描件，也可能属于恢复备份之前的"
           "另一份同编号文书，请打开后核对。"_s.arg(record.docNo, QDir::toNativeSeparators(path));
}

QString secondAnnual(int year)
{
    return u"%1 年度已经有一份股东决定书，再生成会得到第二份。\n\n两份决定同时有效时，内容不能互相"
           "矛盾。确定继续吗？"_s.arg(year);
}

} // namespace DocumentQuestions

#include "FuzzTargets.h"

#include "core/JpegHead.h"
#include "core/Money.h"
#include "core/TextRules.h"
#include "db/RecordReader.h"
#include "db/SqlScript.h"
#include "services/backup/BackupManifest.h"
#include "services/documents/DocumentPdf.h"
#include "services/documents/DocumentRules.h"
#include "services/FileRules.h"
#include "services/vouchers/VoucherSource.h"

#include <QBuffer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <array>
#include <cstring>

using namespace Qt::StringLiterals;

namespace FuzzTargets {

namespace {

void require(bool promise, const char* what)
{
    if (!promise)
        qFatal("%s", what);
}

// The first bytes as a number; zeros stand in for those that are missing.
template <typename Number> Number numberIn(const QByteArray& bytes)
{
    std::array<char, sizeof(Number)> raw {};
    std::memcpy(raw.data(), bytes.constData(),
        std::min(raw.size(), static_cast<std::size_t>(bytes.size())));
    Number number;
    std::memcpy(&number, raw.data(), raw.size());
    return number;
}

// A file of these bytes in a folder that is used again and again.
QString fileOf(const QByteArray& bytes, const QString& name)
{
    static const QTemporaryDir folder;
    QFile file(folder.filePath(name));
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "no room");
    return file.fileName();
}

void sqlScript(const QByteArray& bytes)
{
    const QString script = QString::fromUtf8(bytes);
    const QStringList statements = SqlScript::splitStatements(script);
    for (const QString& statement : statements)
        require(!statement.trimmed().isEmpty(), "an empty statement");
    const QString joined = statements.join(QString());
    require(joined.size() <= script.size(), "text was invented");
    require(SqlScript::splitStatements(joined) == statements, "cut differently the second time");
    require(SqlScript::stripLineComments(script).size() <= script.size(), "text was invented");
}

QStringList riskReasonsIn(const QString& cell)
{
    QStringList reasons;
    CellValue::read(QVariant(cell), reasons);
    return reasons;
}

void riskReasons(const QByteArray& bytes)
{
    const QString cell = QString::fromUtf8(bytes);
    const QStringList reasons = riskReasonsIn(cell);
    const QJsonDocument json = QJsonDocument::fromJson(cell.trimmed().toUtf8());
    if (json.isArray()) {
        QStringList expected;
        for (const auto& element : json.array())
            expected += element.toString();
        require(reasons == expected, "the quick way reads something else");
    }
    require(riskReasonsIn(CellValue::fromTexts(reasons).toString()) == reasons, "not read back");
}

void selectedItems(const QByteArray& bytes)
{
    DocumentRecord record;
    record.docType = DocType::FundDecision;
    record.selectedItems = QString::fromUtf8(bytes);
    const QStringList texts = DocumentRules::selectedTexts(record);
    require(DocumentRules::coveredIds(record).size() == texts.size(), "an entry went missing");
    if (texts.isEmpty())
        require(!DocumentRules::firstProblem(record).isEmpty(), "nothing selected and no problem");
}

void backupManifest(const QByteArray& bytes)
{
    const BackupManifest manifest = BackupManifest::fromBytes(bytes);
    require(manifest.voucherFiles.value_or(0) >= 0, "less than no files");
    const BackupManifest again = BackupManifest::fromBytes(manifest.toBytes());
    require(again.version == manifest.version && again.kind == manifest.kind
            && again.time == manifest.time
            && again.voucherFiles == manifest.voucherFiles.value_or(0),
        "not read back");
}

void dateInput(const QByteArray& bytes)
{
    const QString typed = QString::fromUtf8(bytes);
    const QDate date = TextRules::dateFromInput(typed);
    require(!date.isValid() || (date.year() >= 1900 && date.year() <= 9999), "an odd year");
    require(TextRules::dateFromText(TextRules::dateText(date)) == date, "not read back");
    const QDate stored = TextRules::dateFromText(typed);
    require(!stored.isValid() || TextRules::dateText(stored) == typed, "another day");
}

void money(const QByteArray& bytes)
{
    const auto fen = numberIn<qint64>(bytes);
    const QString plain = Money::formatPlain(fen);
    require(Money::format(fen).remove(u',') == plain, "two amounts for one");
    bool isNumber = false;
    require(QString(plain).remove(u'.').toLongLong(&isNumber) == fen && isNumber, "not read back");
    const QString capitals = Money::toChineseUpper(fen);
    require(!capitals.contains(u"零零"_s) && !capitals.contains(u"零元"_s) == (fen != 0),
        "capital numerals that nobody writes");
    // Doubles hold every fen up to there.
    constexpr qint64 exact = qint64(1) << 46;
    if (fen >= -exact && fen <= exact)
        require(Money::fromYuan(static_cast<double>(fen) / 100) == fen, "not the same amount");
    (void)Money::fromYuan(numberIn<double>(bytes));
}

void voucherSource(const QByteArray& bytes)
{
    const QStringList extensions = FileRules::acceptedExtensions() << u"exe"_s << QString();
    const auto which = bytes.isEmpty() ? 0 : static_cast<unsigned char>(bytes.front());
    const QString& extension = extensions.at(which % extensions.size());
    const QByteArray content = bytes.mid(1);
    const auto source = VoucherSource::read(fileOf(content, u"a."_s + extension));
    const bool accepted = FileRules::acceptedExtensions().contains(extension);
    require(source.problem.isEmpty() == accepted, "judged by something else than its type");
    require(!accepted || source.content == content, "other bytes");
    require(source.sha256.size() == (accepted ? 64 : 0), "no digest");
}

void pdfMark(const QByteArray& bytes)
{
    const QString html = QString::fromUtf8(bytes);
    require(!DocumentPdf::isOf(fileOf(bytes, u"a.pdf"_s), html), "a mark that nobody set");
}

void jpegHead(const QByteArray& bytes)
{
    QBuffer head;
    head.setData(bytes);
    require(head.open(QIODevice::ReadOnly), "no room");
    require(JpegHead::needsWholePicture(head) || bytes.contains("\xff\xc0")
            || bytes.contains("\xff\xc1"),
        "a picture without a frame");
}

constexpr auto targets = std::to_array<Target>({
    { u"sql_script", sqlScript },
    { u"risk_reasons", riskReasons },
    { u"selected_items", selectedItems },
    { u"backup_manifest", backupManifest },
    { u"date_input", dateInput },
    { u"money", money },
    { u"voucher_source", voucherSource },
    { u"pdf_mark", pdfMark },
    { u"jpeg_head", jpegHead },
});

} // namespace

std::span<const Target> all()
{
    return targets;
}

} // namespace FuzzTargets

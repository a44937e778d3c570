#include "core/AppPaths.h"
#include "db/VoucherDao.h"
#include "dialogs/preview/VoucherPreview.h"
#include "hostile/LogFilter.h"
#include "services/DesktopFiles.h"
#include "services/documents/DocumentFiles.h"
#include "services/documents/DocumentPdf.h"
#include "services/FileRules.h"
#include "services/vouchers/VoucherService.h"
#include "support/DatabaseTestCase.h"
#include "support/ModalAnswerer.h"
#include "support/TestFile.h"
#include "vouchers_page/ArchiveSample.h"
#include "widgets/FileView.h"
#include "widgets/ThumbnailDecoder.h"

#include <QBuffer>
#include <QDesktopServices>
#include <QFile>
#include <QImageWriter>
#include <QtEndian>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

const QString damaged = u"文件已损坏或不是有效的图片、PDF，无法显示。"_s;
const QString locked = u"这个 PDF 文件设有密码，无法在这里显示。请用默认程序打开。"_s;
const QString tooLarge = u"文件过大，无法在这里显示。请用默认程序打开。"_s;

QByteArray picture(const char* format, QSize size = { 60, 40 }, bool progressive = false)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    QBuffer buffer;
    QImageWriter writer(&buffer, format);
    writer.setProgressiveScanWrite(progressive);
    return writer.write(image) ? buffer.data() : QByteArray();
}

// A picture in several passes whose head promises these pixels.
QByteArray progressivePicture(quint16 width, quint16 height)
{
    QByteArray bytes = picture("JPG", { 8, 8 }, true);
    const qsizetype frame = bytes.indexOf("\xff\xc2");
    qToBigEndian<quint16>(height, bytes.data() + frame + 5);
    qToBigEndian<quint16>(width, bytes.data() + frame + 7);
    return bytes;
}

// A PNG file whose head promises these pixels.
QByteArray hugePng(quint32 side)
{
    QByteArray bytes = picture("PNG");
    for (const int place : { 16, 20 })
        qToBigEndian<quint32>(side, bytes.data() + place);
    // The checksum of the head, as a program that makes such files would set it.
    quint32 crc = ~0U;
    for (const char byte : bytes.sliced(12, 17)) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (crc & 1 ? 0xedb88320U : 0);
    }
    qToBigEndian<quint32>(~crc, bytes.data() + 29);
    return bytes;
}

// A PDF file of empty pages, without a table of contents, as a repairing reader takes it.
QByteArray pdf(int pages, const QByteArray& size, const QByteArray& trailer = {})
{
    QByteArray kids;
    QByteArray objects;
    for (int page = 0; page < pages; ++page) {
        const QByteArray number = QByteArray::number(page + 3);
        kids += number + " 0 R ";
        objects += number + " 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 " + size + "]>>endobj\n";
    }
    return "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n2 0 obj<</Type/Pages/Count "
        + QByteArray::number(pages) + "/Kids[" + kids + "]>>endobj\n" + objects
        + "trailer<</Root 1 0 R/Size " + QByteArray::number(pages + 3) + trailer + ">>\n%%EOF\n";
}

} // namespace

class TestHostileFiles final : public DatabaseTestCase {
    Q_OBJECT

public slots:
    /// Stands in for the desktop.
    void openUrl(const QUrl& url) { m_opened += url; }

private slots:
    void whatAVoucherFileIsShowsInItsPreview_data()
    {
        addColumns<QString, QByteArray, QString>("extension", "bytes", "message");
        const QString pdfFile = u"pdf"_s;
        const QByteArray half = picture("PNG", { 600, 400 });
        const QByteArray key = "/ID[<00><00>]/Encrypt<</Filter/Standard/V 1/R 2/P -4/O<"
            + QByteArray(64, '1') + ">/U<" + QByteArray(64, '2') + ">>>";
        addCase("a program", pdfFile, QByteArray("MZ\x90\0\3", 5), damaged);
        addCase("a picture as a document", pdfFile, picture("PNG"), damaged);
        addCase("a document as a picture", u"jpg"_s, pdf(1, "200 100"), damaged);
        addCase("a picture of another kind", u"jpg"_s, picture("PNG"), QString());
        addCase("half a picture", u"png"_s, half.first(half.size() / 2), damaged);
        addCase("half a document", pdfFile, ArchiveSample::pdf(1).first(300), damaged);
        addCase("a huge picture", u"png"_s, hugePng(30'000),
            u"图片过大（30000 × 30000 像素），无法在这里显示。请用默认程序打开。"_s);
        addCase("a large picture in passes", u"jpg"_s, progressivePicture(12'000, 12'000),
            u"图片过大（12000 × 12000 像素），无法在这里显示。请用默认程序打开。"_s);
        addCase("a small picture in passes", u"jpg"_s, picture("JPG", { 60, 40 }, true), QString());
        addCase("a document with a password", pdfFile, pdf(1, "200 100", key), locked);
        addCase("a thousand pages", pdfFile, pdf(1000, "200 100"), QString());
        addCase("a page of ten kilometres", pdfFile, pdf(1, "28346457 28346457"), tooLarge);
        addCase("a page as thin as a hair", pdfFile, pdf(1, "100000 0.001"), QString());
        addCase("a page of no size", pdfFile, pdf(1, "-1 -1 -1"), QString());
    }

    void whatAVoucherFileIsShowsInItsPreview()
    {
        QFETCH(QString, extension);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, message);
        const LogFilter log({ u"libpng "_s });
        QVERIFY(ArchiveSample::add(u"甲"_s, 2, 0, {}, bytes, extension) > 0);
        const QList<Voucher> vouchers = VoucherDao().search({});
        const QString path = AppPaths::toAbsolute(vouchers.first().storedPath);
        QCOMPARE(TestFile::bytesOf(path), bytes);
        const QImage thumbnail = ThumbnailDecoder::decode(path, { 100, 80 });
        QCOMPARE(thumbnail.isNull(), !message.isEmpty());
        QVERIFY(thumbnail.width() <= 100 && thumbnail.height() <= 80);
        VoucherPreview preview(vouchers, 0);
        preview.show();
        auto* view = preview.findChild<FileView*>();
        QTRY_COMPARE_WITH_TIMEOUT(view->message(), message, 20'000);
        QCOMPARE(view->hasPicture(), message.isEmpty());
        (void)preview.grab();
    }

    void filesAreTakenUpToTheLimitAndNoLarger_data()
    {
        addColumns<qint64, bool>("size", "taken");
        addCase("nothing", qint64(0), true);
        addCase("20 MB", FileRules::maxFileSize, true);
        addCase("a byte more", FileRules::maxFileSize + 1, false);
    }

    void filesAreTakenUpToTheLimitAndNoLarger()
    {
        QFETCH(qint64, size);
        const QString path = AppPaths::dataDir() + u"/<b>%1\u202e.pdf"_s;
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(size));
        const auto result = VoucherService::importVoucher({ .sourcePath = path }, 0, {});
        QTEST(result.ok, "taken");
        QCOMPARE(result.error.isEmpty(), result.ok);
        if (result.ok)
            QCOMPARE(QFileInfo(AppPaths::toAbsolute(result.storedPath)).size(), size);
    }

    void programsAreNotOpened()
    {
        QDesktopServices::setUrlHandler(u"file"_s, this, "openUrl");
        const QString program = AppPaths::voucherAssetsDir() + u"/<b>票据.pdf.desktop"_s;
        QVERIFY(TestFile::put(program, "[Desktop Entry]"));
        {
            ModalAnswerer answerer(u"确定"_s);
            QVERIFY(!DesktopFiles::openFile(nullptr, program));
            QVERIFY(answerer.seen().value(0).text.contains(
                u"为安全起见，只打开图片和 PDF 文件：\n"_s + program));
        }
        const DocumentRecord elsewhere { .docNo = u"甲"_s, .filePath = program };
        QCOMPARE(DocumentFiles::documentFile(elsewhere), DocumentFiles::ownFile(elsewhere));
        QDesktopServices::unsetUrlHandler(u"file"_s);
        QCOMPARE(m_opened, QList<QUrl>());
    }

    void documentsReadNoOtherFile()
    {
        const QString path = AppPaths::dataDir() + u"/private.png"_s;
        QVERIFY(TestFile::put(path, picture("PNG")));
        const LogFilter log({ u"A document refers to a file that is not read: "_s });
        const QByteArray bytes = DocumentPdf::render(
            u"<p>甲</p><img src='%1'><img src='%2'><p style='background-image: url(%2)'>乙</p>"_s
                .arg(QUrl::fromLocalFile(path).toString(), path),
            u"甲"_s);
        QVERIFY(bytes.startsWith("%PDF"));
        QVERIFY2(!bytes.contains("/Width 60"), "the picture is in the document");
    }

private:
    QList<QUrl> m_opened;
};

static const RegisteredTest<TestHostileFiles> registered;

#include "TestHostileFiles.moc"

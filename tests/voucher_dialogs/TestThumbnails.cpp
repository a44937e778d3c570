#include "core/AppPaths.h"
#include "support/TestCase.h"
#include "support/TestFile.h"
#include "vouchers_page/ArchiveSample.h"
#include "widgets/ThumbnailCache.h"
#include "widgets/ThumbnailDecoder.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

QString path(const QString& name)
{
    return AppPaths::dataDir() + u'/' + name;
}

bool savePicture(const QString& name, const QSize& size, const QColor& color)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image.save(path(name));
}

} // namespace

class TestThumbnails final : public TestCase {
    Q_OBJECT

private slots:
    void picturesAreFittedIntoTheirBox()
    {
        QVERIFY(savePicture(u"wide.png"_s, { 400, 200 }, Qt::red));
        QVERIFY(savePicture(u"small.png"_s, { 10, 5 }, Qt::red));
        QVERIFY(TestFile::put(path(u"photo.jpg"_s), ArchiveSample::turnedJpeg()));
        QVERIFY(TestFile::put(path(u"page.pdf"_s), ArchiveSample::pdf(1)));
        QCOMPARE(
            ThumbnailDecoder::decode(path(u"wide.png"_s), { 100, 100 }).size(), QSize(100, 50));
        QCOMPARE(ThumbnailDecoder::decode(path(u"small.png"_s), { 100, 100 }).size(), QSize(10, 5));
        QCOMPARE(
            ThumbnailDecoder::decode(path(u"photo.jpg"_s), { 100, 100 }).size(), QSize(50, 100));
        const QImage page = ThumbnailDecoder::decode(path(u"page.pdf"_s), { 100, 100 });
        QCOMPARE(page.height(), 100);
        QVERIFY(page.width() > 50 && page.width() < 100);
        QCOMPARE(page.pixelColor(page.rect().center()), QColor(Qt::blue));
    }

    void whatCannotBeShownIsUnreadable_data()
    {
        addColumns<QString, QByteArray>("name", "bytes");
        addCase("missing", u"gone.png"_s, QByteArray());
        addCase("no picture", u"a.png"_s, QByteArray("hello"));
        addCase("drawing", u"a.png"_s, QByteArray("<svg xmlns='http://www.w3.org/2000/svg'/>"));
        addCase("no document", u"a.pdf"_s, QByteArray("%PDF-1.4 nothing"));
        addCase("huge", u"a.jpg"_s, ArchiveSample::hugeJpeg());
    }

    void whatCannotBeShownIsUnreadable()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        if (!bytes.isEmpty())
            QVERIFY(TestFile::put(path(name), bytes));
        ThumbnailCache& cache = ThumbnailCache::instance();
        QSignalSpy ready(&cache, &ThumbnailCache::ready);
        QVERIFY(cache.thumbnail(path(name), { 40, 40 }, 1).isNull());
        QTRY_COMPARE(ready.count(), 1);
        QVERIFY(cache.isUnreadable(path(name)));
        QVERIFY(cache.thumbnail(path(name), { 40, 40 }, 1).isNull());
        QTest::qWait(0);
        QCOMPARE(ready.count(), 1);
    }

    void aChangedFileIsDecodedAnew()
    {
        ThumbnailCache& cache = ThumbnailCache::instance();
        const auto center = [&cache] {
            const QPixmap pixmap = cache.thumbnail(path(u"a.png"_s), { 20, 20 }, 2);
            return pixmap.isNull() ? QColor() : pixmap.toImage().pixelColor(5, 5);
        };
        QVERIFY(TestFile::put(path(u"a.png"_s), "not yet"));
        QCOMPARE(center(), QColor());
        QTRY_VERIFY(cache.isUnreadable(path(u"a.png"_s)));
        QVERIFY(savePicture(u"a.png"_s, { 80, 80 }, Qt::red));
        QTRY_COMPARE(center(), QColor(Qt::red));
        QVERIFY(!cache.isUnreadable(path(u"a.png"_s)));
        QCOMPARE(cache.thumbnail(path(u"a.png"_s), { 20, 20 }, 2).size(), QSize(40, 40));
        QVERIFY(savePicture(u"a.png"_s, { 90, 90 }, Qt::green));
        QTRY_COMPARE(center(), QColor(Qt::green));
    }

    void manyDocumentsAreDecodedAtOnce()
    {
        ThumbnailCache& cache = ThumbnailCache::instance();
        QSignalSpy ready(&cache, &ThumbnailCache::ready);
        for (int i = 0; i < 40; ++i) {
            QVERIFY(TestFile::put(path(u"%1.pdf"_s.arg(i)), ArchiveSample::pdf(1)));
            (void)cache.thumbnail(path(u"%1.pdf"_s.arg(i)), { 60, 60 }, 1);
        }
        QTRY_COMPARE_WITH_TIMEOUT(ready.count(), 40, 30000);
        QVERIFY(!cache.thumbnail(path(u"0.pdf"_s), { 60, 60 }, 1).isNull());
    }
};

static const RegisteredTest<TestThumbnails> registered;

#include "TestThumbnails.moc"

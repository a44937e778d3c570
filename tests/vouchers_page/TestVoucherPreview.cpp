#include "core/AppPaths.h"
#include "db/VoucherDao.h"
#include "dialogs/preview/VoucherPreview.h"
#include "support/DatabaseTestCase.h"
#include "support/Hands.h"
#include "support/ModalAnswerer.h"
#include "support/TestFile.h"
#include "support/TestLedger.h"
#include "vouchers_page/ArchiveSample.h"
#include "widgets/FileView.h"

#include <QApplication>
#include <QLabel>
#include <QScrollBar>
#include <QWheelEvent>

using namespace Qt::StringLiterals;
using ArchiveSample::add;

namespace {

QString textOf(const VoucherPreview& preview, const QString& label)
{
    return preview.findChild<QLabel*>(label)->text();
}

QString fileOf(const Voucher& voucher)
{
    return AppPaths::toAbsolute(voucher.storedPath);
}

} // namespace

class TestVoucherPreview final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void theFileIsShownWithWhatItIsAndWhetherItIsTheArchivedOne()
    {
        add(TestLedger::hostileName, 2);
        const QList<Voucher> vouchers = VoucherDao().search({});
        VoucherPreview preview(vouchers, 0);
        preview.show();
        auto* view = preview.findChild<FileView*>();
        QTRY_VERIFY(view->hasPicture());
        QCOMPARE(textOf(preview, u"previewName"_s), TestLedger::hostileName);
        QVERIFY(textOf(preview, u"previewMeta"_s).startsWith(u"发票票据 · 2026-01-02 · "_s));
        QCOMPARE(textOf(preview, u"previewHash"_s), u"SHA-256："_s + vouchers.at(0).sha256);
        QTRY_COMPARE(textOf(preview, u"previewCheck"_s), u"✓ 与归档时一致"_s);
        QCOMPARE(textOf(preview, u"previewZoom"_s), u"100%"_s); // small: not enlarged

        QVERIFY(TestFile::put(fileOf(vouchers.at(0)), ArchiveSample::jpeg(9, 9)));
        const VoucherPreview altered(vouchers, 0);
        QTRY_COMPARE(textOf(altered, u"previewCheck"_s), u"✗ 与归档时不一致，文件可能被改动"_s);
    }

    void keysTurnPagesAndVouchers()
    {
        add(u"合同"_s, 3, 0, {}, ArchiveSample::pdf(3), u"pdf"_s);
        add(u"照片"_s, 2, 0, {}, ArchiveSample::turnedJpeg(), u"jpg"_s);
        const QList<Voucher> vouchers = VoucherDao().search({});
        VoucherPreview preview(vouchers, 0);
        QVERIFY(Hands::show(preview));
        auto* view = preview.findChild<FileView*>();
        QTRY_COMPARE(textOf(preview, u"previewPages"_s), u"第 1 页，共 3 页"_s);
        for (int turn = 0; turn < 3; ++turn)
            QTest::keyClick(view, Qt::Key_PageDown);
        QCOMPARE(view->page(), 2);
        QTRY_VERIFY(view->hasPicture());
        QTest::keyClick(view, Qt::Key_PageUp);
        QCOMPARE(textOf(preview, u"previewPages"_s), u"第 2 页，共 3 页"_s);
        QTest::keyClick(view, Qt::Key_Left); // there is none before
        QCOMPARE(preview.shownId(), vouchers.at(0).id);
        QTest::keyClick(view, Qt::Key_Right);
        QCOMPARE(preview.shownId(), vouchers.at(1).id);
        QCOMPARE(textOf(preview, u"previewName"_s), u"照片"_s);
        QCOMPARE(textOf(preview, u"previewPlace"_s), u"第 2 张，共 2 张"_s);
        QTRY_VERIFY(view->hasPicture());
        QVERIFY(!preview.findChild<QLabel*>(u"previewPages"_s)->isVisible());
        QTest::keyClick(view, Qt::Key_Space);
        QVERIFY(!preview.isVisible());
    }

    void enterTurnsFromTheButtonInFocusAndClosesFromElsewhere()
    {
        for (const QString& name : { u"甲"_s, u"乙"_s })
            add(name, 2);
        VoucherPreview preview(VoucherDao().search({}), 0);
        preview.show();
        QVERIFY(QTest::qWaitForWindowActive(&preview));
        ModalAnswerer::buttonOf(&preview, u"下一张"_s)->setFocus();
        QTest::keyClick(preview.focusWidget(), Qt::Key_Return);
        QCOMPARE(textOf(preview, u"previewPlace"_s), u"第 2 张，共 2 张"_s);
        QCOMPARE(preview.focusWidget(), preview.findChild<FileView*>());
        QTest::keyClick(preview.focusWidget(), Qt::Key_Return);
        QVERIFY(!preview.isVisible());
    }

    void thePageIsZoomed()
    {
        add(u"照片"_s, 2, 0, {}, ArchiveSample::jpeg(3000, 2000), u"jpg"_s);
        VoucherPreview preview(VoucherDao().search({}), 0);
        QVERIFY(Hands::show(preview));
        auto* view = preview.findChild<FileView*>();
        QTRY_VERIFY(view->hasPicture());
        const qreal fitted = view->factor();
        QVERIFY(fitted < 0.5);
        QVERIFY(view->verticalScrollBar()->maximum() == 0);
        QTest::keyClick(view, Qt::Key_0, Qt::ControlModifier);
        QCOMPARE(view->factor(), 1.0);
        QVERIFY(view->verticalScrollBar()->maximum() > 0);
        QTest::keyClick(view, Qt::Key_Plus, Qt::ControlModifier);
        QCOMPARE(view->factor(), 1.25);
        QTest::keyClick(view, Qt::Key_Minus, Qt::ControlModifier);
        QTest::keyClick(view, Qt::Key_Minus, Qt::ControlModifier);
        QCOMPARE(view->factor(), 0.8);
        const QPointF place(20, 20);
        QWheelEvent wheel(place, view->viewport()->mapToGlobal(place), {}, { 0, 120 }, Qt::NoButton,
            Qt::ControlModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view->viewport(), &wheel);
        QCOMPARE(view->factor(), 1.0);
        ModalAnswerer::buttonOf(&preview, u"适合宽度"_s)->click();
        QCOMPARE(view->horizontalScrollBar()->maximum(), 0);
        ModalAnswerer::buttonOf(&preview, u"适合页面"_s)->click();
        QCOMPARE(view->factor(), fitted);
    }

    void whatCannotBeShownIsSaid_data()
    {
        addColumns<QByteArray, QString, QString>("content", "extension", "message");
        addCase("no picture", QByteArray("hello"), u"png"_s,
            u"文件已损坏或不是有效的图片、PDF，无法显示。"_s);
        addCase("no document", QByteArray("%PDF-1.4 nothing"), u"pdf"_s,
            u"文件已损坏或不是有效的图片、PDF，无法显示。"_s);
        addCase("huge", ArchiveSample::hugeJpeg(), u"jpg"_s,
            u"图片过大（30000 × 30000 像素），无法在这里显示。请用默认程序打开。"_s);
        addCase("missing", QByteArray(), u"png"_s, u"文件缺失：原来的位置上已没有这个文件。"_s);
    }

    void whatCannotBeShownIsSaid()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, extension);
        QFETCH(QString, message);
        add(u"甲"_s, 2, 0, {}, content, extension);
        const QList<Voucher> vouchers = VoucherDao().search({});
        if (content.isEmpty())
            QVERIFY(QFile::remove(fileOf(vouchers.at(0))));
        VoucherPreview preview(vouchers, 0);
        preview.show();
        auto* view = preview.findChild<FileView*>();
        QTRY_COMPARE(view->message(), message);
        QVERIFY(!view->hasPicture());
        QVERIFY(!ModalAnswerer::buttonOf(&preview, u"放大"_s)); // there is nothing to enlarge
    }

    void aPreviewCanBeLeftWhileItOpens()
    {
        add(u"照片"_s, 2, 0, {}, ArchiveSample::jpeg(6000, 4000), u"jpg"_s);
        for (int time = 0; time < 5; ++time)
            VoucherPreview(VoucherDao().search({}), 0).show();
        QTest::qWait(50);
    }

    void zoomFitsTheRoom_data()
    {
        addColumns<PageZoom::Fit, QSizeF, bool, QSize>("fit", "natural", "scales", "pixels");
        using Fit = PageZoom::Fit;
        addCase("wide picture", Fit::Page, QSizeF(4000, 1000), false, QSize(1000, 250));
        addCase("small picture", Fit::Page, QSizeF(40, 10), false, QSize(40, 10));
        addCase("small page", Fit::Page, QSizeF(100, 50), true, QSize(1000, 500));
        addCase("width beside the bar", Fit::Width, QSizeF(1980, 100), true, QSize(990, 50));
        addCase("a line", Fit::Page, QSizeF(100000, 1), false, QSize(1000, 1));
        addCase("no more than a picture has", Fit::None, QSizeF(100, 50), false, QSize(100, 50));
        addCase("no more than memory is good for", Fit::None, QSizeF(3000, 3000), true,
            QSize(4899, 4899));
    }

    void zoomFitsTheRoom()
    {
        QFETCH(PageZoom::Fit, fit);
        QFETCH(QSizeF, natural);
        QFETCH(bool, scales);
        const PageZoom zoom {
            .fit = fit, .factor = 4, .room = { 1000, 800 }, .scrollBarWidth = 10
        };
        QTEST(zoom.pixelsFor(natural, scales), "pixels");
    }
};

static const RegisteredTest<TestVoucherPreview> registered;

#include "TestVoucherPreview.moc"

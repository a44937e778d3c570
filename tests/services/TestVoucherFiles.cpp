#include "core/AppPaths.h"
#include "services/vouchers/VoucherFiles.h"
#include "services/VoucherSample.h"
#include "support/DatabaseTestCase.h"
#include "support/ModalAnswerer.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QUrl>

using namespace Qt::StringLiterals;
using namespace VoucherSample;

namespace {

using Action = void (*)(QWidget*, qint64);

// Runs the action and closes the box that it opens: "title|text|buttons".
QString boxOf(Action action, qint64 voucherId)
{
    const ModalAnswerer answerer(u"确定"_s);
    action(nullptr, voucherId);
    const auto seen = answerer.seen().value(0);
    return (QStringList { seen.title, seen.text } + seen.buttons).join(u'|');
}

void runWithoutBox(Action action, qint64 voucherId)
{
    const ModalAnswerer answerer;
    action(nullptr, voucherId);
}

// A program of this name, found before all others, that writes its arguments down.
bool installRecorder(const QString& folder, const QString& name)
{
    QFile program(folder + u'/' + name);
    return QDir().mkpath(folder) && program.open(QIODevice::WriteOnly)
        && program.write("#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$0.part\"\n"
                         "mv \"$0.part\" \"$0.arguments\"\n")
        > 0
        && program.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
}

} // namespace

class TestVoucherFiles final : public DatabaseTestCase {
    Q_OBJECT

public slots:
    /// Stands in for the desktop: keeps what it is asked to open.
    void openUrl(const QUrl& url) { m_opened += url; }

private slots:
    void init()
    {
        DatabaseTestCase::init();
        m_opened.clear();
        QDesktopServices::setUrlHandler(u"file"_s, this, "openUrl");
    }

    void cleanup()
    {
        QDesktopServices::unsetUrlHandler(u"file"_s);
        DatabaseTestCase::cleanup();
    }

    void theFileIsOpenedByTheDesktop()
    {
        const qint64 id = archived(u"回单 #1 100%.pdf"_s);
        runWithoutBox(VoucherFiles::openVoucherFile, id);
        QCOMPARE(m_opened, QList<QUrl> { QUrl::fromLocalFile(copyPath()) });
    }

    void theFolderIsOpenedWithoutAFileManagerThatSelects()
    {
#ifndef Q_OS_WIN
        const qint64 id = archived(u"a.pdf"_s);
        runWithoutBox(VoucherFiles::showVoucherInFolder, id);
        QCOMPARE(m_opened, QList<QUrl> { QUrl::fromLocalFile(AppPaths::voucherAssetsDir()) });
#endif
    }

    void theFileManagerSelectsTheFile()
    {
#ifndef Q_OS_WIN
        const QString folder = AppPaths::dataDir() + u"/programs"_s;
        QVERIFY(installRecorder(folder, u"explorer.exe"_s));
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", folder.toLocal8Bit() + ':' + path);
        runWithoutBox(VoucherFiles::showVoucherInFolder, archived(u"a.pdf"_s));
        qputenv("PATH", path);
        const QString arguments = folder + u"/explorer.exe.arguments"_s;
        QTRY_VERIFY(QFile::exists(arguments));
        QCOMPARE(TestFile::bytesOf(arguments),
            "/select,\n" + QDir::toNativeSeparators(copyPath()).toLocal8Bit() + '\n');
        QVERIFY(m_opened.isEmpty());
#endif
    }

    void whatCannotBeShownIsToldInABox_data()
    {
        addColumns<QString, QString, QString>("preparation", "box", "warning");
        const auto missing = [](const QString& path) {
            return u"文件缺失|凭证文件副本不存在：\n%1|确定"_s.arg(QDir::toNativeSeparators(path));
        };
        const QString data = AppPaths::dataDir();
        const QString outside = u"The voucher file .* lies outside of the archive's folder"_s;
        addCase("the row is gone", u"DELETE FROM vouchers"_s, u"凭证不存在|该凭证已被删除。|确定"_s,
            QString());
        addCase("the copy is gone",
            u"UPDATE vouchers SET stored_path = 'voucher_assets/<b>%1.pdf'"_s,
            missing(data + u"/voucher_assets/<b>%1.pdf"_s), QString());
        addCase("a folder in its place",
            u"UPDATE vouchers SET stored_path = 'voucher_assets/folder'"_s,
            missing(data + u"/voucher_assets/folder"_s), QString());
        addCase("a program outside of the archive",
            u"UPDATE vouchers SET stored_path = '/bin/sh'"_s, missing(u"/bin/sh"_s), outside);
        addCase("another file of the program",
            u"UPDATE vouchers SET stored_path = 'voucher_assets/../brixa.db'"_s,
            missing(data + u"/voucher_assets/../brixa.db"_s), outside);
        addCase("a record that cannot be read", u"ALTER TABLE vouchers RENAME TO mislaid"_s,
            u"读取失败|凭证记录读取失败：no such table: vouchers Unable to execute statement|确定"_s,
            u"SQL error: no such table: vouchers"_s);
    }

    void whatCannotBeShownIsToldInABox()
    {
        QFETCH(QString, preparation);
        QFETCH(QString, box);
        QFETCH(QString, warning);
        const qint64 id = archived(u"a.pdf"_s);
        QVERIFY(QDir().mkpath(AppPaths::voucherAssetsDir() + u"/folder"_s));
        QCOMPARE(TestDatabase::run({ preparation }), QString());
        for (const Action action :
            { VoucherFiles::openVoucherFile, VoucherFiles::showVoucherInFolder }) {
            if (!warning.isEmpty())
                expectWarnings({ warning });
            QCOMPARE(boxOf(action, id), box);
        }
        QVERIFY(m_opened.isEmpty());
    }

    void aDesktopWithoutViewerIsToldInABox()
    {
        // Without the stand-in the offscreen platform opens nothing.
        QDesktopServices::unsetUrlHandler(u"file"_s);
        const qint64 id = archived(u"a.pdf"_s);
        QCOMPARE(boxOf(VoucherFiles::openVoucherFile, id),
            u"无法打开|系统缺少可打开「%1」的查看程序。|确定"_s.arg(
                QDir::toNativeSeparators(copyPath())));
    }

private:
    QList<QUrl> m_opened;
};

static const RegisteredTest<TestVoucherFiles> registered;

#include "TestVoucherFiles.moc"

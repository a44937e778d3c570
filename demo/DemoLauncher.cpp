#include "DemoLauncher.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

constexpr int failed = 1;

// The screen of the pictures: a common laptop's.
constexpr auto screen = R"({
    "synchronousWindowSystemEvents": false,
    "windowFrameMargins": false,
    "screens": [ {
        "name": "demo", "x": 0, "y": 0, "width": 1440, "height": 900,
        "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1
    } ]
})";

} // namespace

QString DemoLauncher::insideOption()
{
    return u"--inside"_s;
}

QString DemoLauncher::nameOf(DemoSize size)
{
    return size == DemoSize::Short ? u"short"_s : u"full"_s;
}

DemoLauncher::DemoLauncher(const QString& folder, DemoSize size)
    : m_folder(folder)
    , m_size(size)
{
}

int DemoLauncher::run()
{
    if (!prepareFolder())
        return failed;
    const QString copy = m_folder + u"/brixa_demo"_s;
    if (!QFile::copy(QCoreApplication::applicationFilePath(), copy)) {
        fail(u"%1 cannot be written"_s.arg(copy));
        return failed;
    }
    const int status = runCopy(copy);
    QFile::remove(copy);
    return status;
}

bool DemoLauncher::prepareFolder()
{
    if (m_folder.isEmpty()) {
        QTemporaryDir fresh(QDir::tempPath() + u"/brixa-demo-XXXXXX"_s);
        fresh.setAutoRemove(false);
        m_folder = fresh.path();
    }
    m_folder = QDir(m_folder).absolutePath();
    // Records of an owner may lie there, or the pictures of another run.
    for (const QString& name :
        { u"data"_s, u"pictures"_s, u"originals"_s, u"csv"_s, u"brixa_demo"_s }) {
        if (QFileInfo::exists(m_folder + u'/' + name))
            return fail(
                u"%1 has a \"%2\" already; the demo needs a fresh folder"_s.arg(m_folder, name));
    }
    if (!QDir().mkpath(m_folder))
        return fail(u"%1 cannot be made"_s.arg(m_folder));
    return true;
}

int DemoLauncher::runCopy(const QString& copy) const
{
    QTemporaryFile screenFile;
    if (!screenFile.open() || screenFile.write(screen) < 0 || !screenFile.flush()) {
        fail(u"the description of the screen cannot be written"_s);
        return failed;
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen:configfile="_s + screenFile.fileName());
    environment.insert(u"TZ"_s, u"CST-8"_s);
    for (const QString& name : { u"QT_SCALE_FACTOR"_s, u"QT_STYLE_OVERRIDE"_s, u"QT_FONT_DPI"_s })
        environment.remove(name);
    QProcess demo;
    demo.setProcessEnvironment(environment);
    demo.setProcessChannelMode(QProcess::ForwardedChannels);
    demo.start(copy, { insideOption(), nameOf(m_size) });
    if (!demo.waitForStarted() || !demo.waitForFinished(-1)
        || demo.exitStatus() != QProcess::NormalExit) {
        fail(u"the demo broke off: %1"_s.arg(demo.errorString()));
        return failed;
    }
    return demo.exitCode();
}

bool DemoLauncher::fail(const QString& reason)
{
    QTextStream(stderr) << u"FAILED at step \"start\": %1"_s.arg(reason) << Qt::endl;
    return false;
}

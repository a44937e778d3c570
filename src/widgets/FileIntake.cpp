#include "widgets/FileIntake.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QDropEvent>
#include <QFileInfo>
#include <QImage>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QTemporaryDir>
#include <QTimer>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

QStringList localFiles(const QMimeData* data)
{
    QStringList files;
    for (const QUrl& url : data->urls()) {
        if (url.isLocalFile())
            files += url.toLocalFile();
    }
    return files;
}

// Office programs put a picture beside the text that they copy; there the text is meant.
bool holdsPicture(const QMimeData* data)
{
    return data->hasImage() && !data->hasText();
}

bool holdsFiles(const QMimeData* data)
{
    return data && (holdsPicture(data) || !localFiles(data).isEmpty());
}

const QMimeData* clipboardData()
{
    return QApplication::clipboard()->mimeData();
}

// Two pictures may be pasted within one second; the second one must not replace the first.
QString freePath(const QTemporaryDir& folder, const QString& baseName)
{
    QString path = folder.filePath(baseName + u".png"_s);
    for (int number = 2; QFileInfo::exists(path); ++number)
        path = folder.filePath(u"%1_%2.png"_s.arg(baseName, QString::number(number)));
    return path;
}

bool isPaste(QEvent* event)
{
    return event->type() == QEvent::ShortcutOverride
        && static_cast<QKeyEvent*>(event)->matches(QKeySequence::Paste);
}

} // namespace

FileIntake::FileIntake(QWidget* window)
    : QObject(window)
    , m_window(window)
{
    window->setAcceptDrops(true);
    window->installEventFilter(this);
    watchFields();
    connect(new QShortcut(QKeySequence::Paste, window), &QShortcut::activated, this,
        &FileIntake::offerClipboard);
}

FileIntake::~FileIntake() = default;

void FileIntake::watchFields()
{
    const auto watch = [this](QWidget* field) {
        field->setAcceptDrops(false);
        field->installEventFilter(this);
    };
    for (auto* edit : m_window->findChildren<QLineEdit*>())
        watch(edit);
    for (auto* box : m_window->findChildren<QAbstractSpinBox*>())
        watch(box);
    for (auto* area : m_window->findChildren<QPlainTextEdit*>())
        watch(area);
}

bool FileIntake::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_window) {
        // The field claims the key for pasting text; files are for the window's own shortcut.
        const bool isOurs = isPaste(event) && holdsFiles(clipboardData());
        if (isOurs)
            event->ignore();
        return isOurs;
    }
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return dropped(static_cast<QDropEvent*>(event));
    default:
        return false;
    }
}

bool FileIntake::dropped(QDropEvent* event)
{
    const QStringList files = localFiles(event->mimeData());
    // A dialog in front has to be answered first.
    const QWidget* front = QApplication::activeModalWidget();
    if (files.isEmpty() || (front && front != m_window))
        return false;
    // Never a move: the sender would delete its file.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    if (event->type() == QEvent::Drop)
        offer(files);
    return true;
}

void FileIntake::offerClipboard()
{
    const QMimeData* data = clipboardData();
    if (!holdsFiles(data))
        return;
    QStringList files = localFiles(data);
    if (files.isEmpty())
        files += savedPicture(data);
    files.removeAll(QString());
    if (!files.isEmpty())
        offer(files);
}

QString FileIntake::savedPicture(const QMimeData* data)
{
    if (!m_pictures)
        m_pictures = std::make_unique<QTemporaryDir>();
    const QString path = freePath(*m_pictures,
        u"粘贴图片_%1"_s.arg(QDateTime::currentDateTime().toString(u"yyyyMMdd_HHmmss")));
    if (qvariant_cast<QImage>(data->imageData()).save(path, "PNG"))
        return path;
    qWarning("The pasted picture could not be written to %s", qUtf8Printable(path));
    return {};
}

void FileIntake::offer(const QStringList& files)
{
    // The program that the files come from waits until the drop has been handled.
    QTimer::singleShot(0, this, [this, files] { emit offered(files); });
}

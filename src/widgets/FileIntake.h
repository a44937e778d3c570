#pragma once

#include <QObject>
#include <QStringList>

#include <memory>

class QDropEvent;
class QMimeData;
class QTemporaryDir;
class QWidget;

/// Takes the files that are dropped on a window or pasted into it, the picture of a screenshot
/// included. Fields for text let them through; text is pasted as ever.
class FileIntake final : public QObject {
    Q_OBJECT

public:
    /// Watches the window with the fields that it has by then.
    explicit FileIntake(QWidget* window);
    ~FileIntake() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// Absolute paths, from the event loop. A pasted picture lies in a file that lives as long as
    /// the window.
    void offered(const QStringList& files);

private:
    void watchFields();
    bool dropped(QDropEvent* event);
    void offerClipboard();
    QString savedPicture(const QMimeData* data);
    void offer(const QStringList& files);

    QWidget* m_window;
    std::unique_ptr<QTemporaryDir> m_pictures;
};

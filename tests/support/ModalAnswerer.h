#pragma once

#include <QAbstractButton>
#include <QDialog>
#include <QElapsedTimer>
#include <QPointer>
#include <QStringList>
#include <QTimer>

#include <deque>
#include <functional>

/// Answers the modal boxes and dialogs that open while it lives, in the order in which they were
/// announced. A box that nobody announced is rejected and fails the test; so does an announced
/// one that never opened.
class ModalAnswerer final : public QObject {
    Q_OBJECT

public:
    struct Seen {
        QString title;
        QString text; // of all labels, a line each
        QStringList buttons;
    };

    ModalAnswerer();
    /// Expects one box from the beginning, as the functions below do.
    explicit ModalAnswerer(const QString& button);
    explicit ModalAnswerer(std::function<void(QDialog*)> act);
    ~ModalAnswerer() override;

    /// The next one is answered by the button with this text (mnemonics aside).
    void expectButton(const QString& text);

    /// The next one is handed to `act`, which has to end it, at once or later.
    void expect(std::function<void(QDialog*)> act);

    /// What has been answered so far.
    const QList<Seen>& seen() const { return m_seen; }

    /// The button of `dialog` with this text, or null.
    static QAbstractButton* buttonOf(const QDialog* dialog, const QString& text);

private:
    void look();
    void answer(QDialog* dialog);

    std::deque<std::function<void(QDialog*)>> m_expected;
    QList<Seen> m_seen;
    QPointer<QDialog> m_answered;
    QList<QPointer<QDialog>> m_earlier; // all that were answered
    QElapsedTimer m_sinceAnswer;
    QTimer m_timer;
};

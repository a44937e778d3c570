#pragma once

#include <QDialog>
#include <QElapsedTimer>

class QLabel;
class QProgressBar;
class QPushButton;

/// Tells that the program is at work, for work that keeps the window's thread. Painted before the
/// constructor returns and gone with its scope; meanwhile the windows behind it take no input.
/// The only place in which pending events are handled by hand.
class BusyNotice final : public QDialog {
    Q_OBJECT

public:
    enum class Cancel { No, Allowed };

    BusyNotice(QWidget* parent, const QString& text, Cancel cancel = Cancel::No);
    ~BusyNotice() override;

    /// Repaints at most every few hundredths of a second, so it may be called for every step.
    void setProgress(qsizetype done, qsizetype total);

    void setText(const QString& text);

    /// Whether the user asked to stop; the work ends at its next safe point.
    bool isCancelled() const { return m_cancelled; }

    /// Escape and the close button ask to stop where that is allowed, else they do nothing.
    void reject() override;

private:
    void paintNow();

    const Cancel m_cancel;
    bool m_cancelled = false;
    QElapsedTimer m_sincePaint;
    QLabel* m_text;
    QProgressBar* m_bar;
    QPushButton* m_stop = nullptr;
};

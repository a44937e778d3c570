#pragma once

#include <QDate>
#include <QLineEdit>

class QFrame;
class QTimer;

/// A day, typed or picked from a calendar. Shows "yyyy-MM-dd"; 20250203, 2025/2/3 and 2025.2.3
/// are understood and tidied when the field is left. Anything else is marked as wrong and never
/// turned into another day.
class DateEditor final : public QLineEdit {
    Q_OBJECT

public:
    enum class Empty { Forbidden, Allowed };

    /// The placeholder text says what an empty field means where that is allowed.
    explicit DateEditor(Empty empty = Empty::Forbidden, QWidget* parent = nullptr);

    /// Invalid when the field is empty or holds no day.
    QDate date() const;

    /// An invalid date empties the field.
    void setDate(QDate date);

    /// Fills in the present day. A page may be open for days: until it is changed in any other
    /// way, the field moves on with the calendar.
    void setToday(QDate today = QDate::currentDate());

    /// A day, or empty where that is allowed.
    bool isAcceptable() const;

public slots:
    void openCalendar();

signals:
    /// `date()` has changed; also to an invalid one while a day is being typed.
    void dateChanged(QDate date);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void onTextChanged();
    void tidy();
    void markWrong(bool wrong);
    QFrame* buildCalendar();

    const Empty m_empty;
    QDate m_lastDate;
    QTimer* m_calendar; // runs while the field follows the present day
};

#include "widgets/DateEditor.h"

#include "core/TextRules.h"
#include "theme/Icons.h"
#include "widgets/ButtonRole.h"
#include "widgets/StyleProperty.h"
#include "widgets/ViewStyle.h"

#include <QAction>
#include <QCalendarWidget>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;

namespace {

// Six whole weeks; the calendar's own hint cuts the last one.
constexpr QSize calendarSize(272, 244);

constexpr std::chrono::seconds calendarInterval(20);

// Below the field, or above it where the screen ends, and never beyond the sides.
QPoint placeFor(const QWidget* field, QSize popup)
{
    const QRect screen = field->screen()->availableGeometry();
    QPoint place = field->mapToGlobal(QPoint(0, field->height() + 2));
    if (place.y() + popup.height() > screen.bottom())
        place.setY(field->mapToGlobal(QPoint(0, -2)).y() - popup.height());
    place.setX(std::clamp(
        place.x(), screen.left(), std::max(screen.left(), screen.right() - popup.width())));
    return place;
}

} // namespace

DateEditor::DateEditor(Empty empty, QWidget* parent)
    : QLineEdit(parent)
    , m_empty(empty)
    , m_calendar(new QTimer(this))
{
    m_calendar->setInterval(calendarInterval);
    connect(m_calendar, &QTimer::timeout, this, [this] { setToday(); });
    setPlaceholderText(empty == Empty::Allowed ? u"未设定"_s : u"yyyy-MM-dd"_s);
    setMinimumWidth(136);
    QAction* open = addAction(Icons::icon(u"calendar"), QLineEdit::TrailingPosition);
    open->setText(u"打开日历"_s);
    open->setToolTip(u"打开日历（F4）"_s);
    connect(open, &QAction::triggered, this, &DateEditor::openCalendar);
    connect(this, &QLineEdit::textChanged, this, &DateEditor::onTextChanged);
    // Enter leaves the focus where it is.
    connect(this, &QLineEdit::editingFinished, this, &DateEditor::tidy);
}

QDate DateEditor::date() const
{
    return TextRules::dateFromInput(text());
}

void DateEditor::setDate(QDate date)
{
    setText(TextRules::dateText(date));
}

void DateEditor::setToday(QDate today)
{
    setDate(today);
    m_calendar->start();
}

bool DateEditor::isAcceptable() const
{
    return date().isValid() || (m_empty == Empty::Allowed && TextRules::isBlank(text()));
}

void DateEditor::openCalendar()
{
    QFrame* popup = buildCalendar();
    popup->adjustSize();
    popup->move(placeFor(this, popup->sizeHint()));
    popup->show();
    popup->findChild<QCalendarWidget*>()->setFocus();
}

QFrame* DateEditor::buildCalendar()
{
    auto* popup = new QFrame(this, Qt::Popup);
    popup->setObjectName(u"CalendarPopup"_s);
    popup->setWindowTitle(u"选择日期"_s);
    popup->setAttribute(Qt::WA_DeleteOnClose);
    auto* column = new QVBoxLayout(popup);
    column->setContentsMargins(1, 1, 1, 8);
    column->setSpacing(4);

    auto* calendar = new QCalendarWidget(popup);
    ViewStyle::setUpCalendar(calendar);
    calendar->setAccessibleName(u"日历"_s);
    calendar->setMinimumSize(calendarSize);
    if (date().isValid())
        calendar->setSelectedDate(date());
    column->addWidget(calendar);
    const auto choose = [this, popup](QDate chosen) {
        setDate(chosen);
        popup->close();
        setFocus();
    };
    connect(calendar, &QCalendarWidget::clicked, this, choose);
    connect(calendar, &QCalendarWidget::activated, this, choose);

    auto* line = new QHBoxLayout;
    line->setContentsMargins(8, 0, 8, 0);
    QPushButton* today = makeButton(u"今天"_s, ButtonRole::Link, popup);
    connect(today, &QPushButton::clicked, this, [choose] { choose(QDate::currentDate()); });
    line->addWidget(today);
    line->addStretch();
    if (m_empty == Empty::Allowed) {
        QPushButton* clear = makeButton(placeholderText(), ButtonRole::Link, popup);
        connect(clear, &QPushButton::clicked, this, [choose] { choose({}); });
        line->addWidget(clear);
    }
    column->addLayout(line);
    return popup;
}

void DateEditor::keyPressEvent(QKeyEvent* event)
{
    const bool altDown = event->key() == Qt::Key_Down && event->modifiers() == Qt::AltModifier;
    if ((event->key() == Qt::Key_F4 && event->modifiers() == Qt::NoModifier) || altDown) {
        openCalendar();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void DateEditor::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason)
        tidy();
}

void DateEditor::showEvent(QShowEvent* event)
{
    // Whoever comes back to a page after midnight must not see yesterday for a moment.
    if (m_calendar->isActive())
        setToday();
    QLineEdit::showEvent(event);
}

void DateEditor::onTextChanged()
{
    m_calendar->stop();
    // While somebody is typing, a day that is not finished yet is no mistake.
    if (isAcceptable() || !hasFocus())
        markWrong(!isAcceptable());
    if (const QDate now = date(); now != m_lastDate) {
        m_lastDate = now;
        emit dateChanged(now);
    }
}

void DateEditor::tidy()
{
    if (const QDate day = date(); day.isValid() && text() != TextRules::dateText(day))
        setDate(day);
    markWrong(!isAcceptable());
}

void DateEditor::markWrong(bool wrong)
{
    setStyleProperty(this, "wrong", wrong ? u"true" : u"false");
    setToolTip(wrong ? u"请输入日期，例如 2025-02-03"_s : QString());
    setAccessibleDescription(toolTip());
}

#include "app/SelfCheckStart.h"

#include "app/MainWindow.h"
#include "app/PageSwitchSuite.h"
#include "selfcheck/SelfCheck.h"

#include <QApplication>
#include <QEvent>

using namespace Qt::StringLiterals;

namespace {

constexpr int afterPaintMs = 200;
constexpr int retryMs = 1000;

} // namespace

SelfCheckStart::SelfCheckStart(MainWindow* window)
    : QObject(window)
    , m_window(window)
{
    SelfCheck::instance().setWindowSuite({ u"页面切换"_s, checkPageSwitching });
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &SelfCheckStart::advance);
    connect(&SelfCheck::instance(), &SelfCheck::finished, this, &SelfCheckStart::onFinished);
    window->installEventFilter(this);
}

bool SelfCheckStart::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Paint) {
        m_window->removeEventFilter(this);
        m_timer.start(afterPaintMs);
    }
    return QObject::eventFilter(watched, event);
}

void SelfCheckStart::advance()
{
    m_timer.start(QApplication::activeModalWidget() ? retryMs : 0);
    if (!QApplication::activeModalWidget())
        SelfCheck::instance().advance();
}

void SelfCheckStart::onFinished()
{
    // Also when the user was quicker and had everything checked at once.
    m_timer.stop();
    disconnect(&SelfCheck::instance(), nullptr, this, nullptr);
    // The dashboard tells of the faults; the other pages learn of them when they are opened.
    if (SelfCheck::lastResult().failures() > 0 && m_window->currentPage() == PageId::Dashboard)
        m_window->refreshCurrent();
}

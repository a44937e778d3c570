#include "widgets/BusyNotice.h"

#include "widgets/ButtonRole.h"

#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 msBetweenPaints = 40;

} // namespace

BusyNotice::BusyNotice(QWidget* parent, const QString& text, Cancel cancel)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint)
    , m_cancel(cancel)
    , m_text(new QLabel(this))
    , m_bar(new QProgressBar(this))
{
    setObjectName(u"BusyNotice"_s);
    setWindowTitle(u"请稍候"_s);
    setWindowModality(Qt::ApplicationModal);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 20, 24, 20);
    column->setSpacing(12);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setMinimumWidth(320);
    column->addWidget(m_text);
    m_bar->setRange(0, 0);
    m_bar->setTextVisible(false);
    column->addWidget(m_bar);
    if (cancel == Cancel::Allowed) {
        m_stop = makeButton(u"停止"_s, ButtonRole::Default, this);
        column->addWidget(m_stop, 0, Qt::AlignRight);
        connect(m_stop, &QPushButton::clicked, this, &BusyNotice::reject);
    }
    m_text->setText(text);
    m_bar->setAccessibleName(text);
    show();
    paintNow();
}

BusyNotice::~BusyNotice()
{
    hide();
}

void BusyNotice::setProgress(qsizetype done, qsizetype total)
{
    m_bar->setRange(0, static_cast<int>(total));
    m_bar->setValue(static_cast<int>(done));
    m_bar->setTextVisible(true);
    if (done >= total || m_sincePaint.hasExpired(msBetweenPaints))
        paintNow();
}

void BusyNotice::setText(const QString& text)
{
    m_text->setText(text);
    m_bar->setAccessibleName(text);
    paintNow();
}

void BusyNotice::reject()
{
    if (m_cancel == Cancel::No || m_cancelled)
        return;
    m_cancelled = true;
    m_stop->setEnabled(false);
    m_text->setText(u"正在停止…"_s);
}

void BusyNotice::paintNow()
{
    // Input waits unless there is something to press; being modal, the notice alone gets it.
    const QEventLoop::ProcessEventsFlags flags
        = m_cancel == Cancel::Allowed ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents;
    // The first round shows and lays out, the second paints what that asked for.
    QCoreApplication::processEvents(flags);
    repaint();
    QCoreApplication::processEvents(flags);
    m_sincePaint.start();
}

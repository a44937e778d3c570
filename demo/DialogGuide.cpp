#include "DialogGuide.h"

#include "widgets/BusyNotice.h"

#include <QApplication>
#include <QLabel>
#include <QStringList>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int lookEveryMs = 10;
constexpr int patienceMs = 60'000;

QString describe(const QDialog& dialog)
{
    QStringList texts { u"\"%1\" (%2)"_s.arg(dialog.windowTitle(), dialog.objectName()) };
    for (const auto* label : dialog.findChildren<QLabel*>()) {
        if (label->isVisible() && !label->text().isEmpty())
            texts += label->text();
    }
    return texts.join(u" | ");
}

} // namespace

DialogGuide::DialogGuide()
{
    connect(&m_timer, &QTimer::timeout, this, &DialogGuide::look);
    m_timer.start(lookEveryMs);
}

void DialogGuide::expect(const QString& objectName, Visit visit)
{
    m_expected.push_back({ objectName, std::move(visit) });
}

Problem DialogGuide::takeProblem()
{
    if (!m_expected.empty())
        note(u"the dialog %1 did not open"_s.arg(m_expected.front().objectName));
    m_expected.clear();
    return std::exchange(m_problem, {});
}

void DialogGuide::look()
{
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    // A notice of work that goes on asks for nothing and goes by itself.
    if (!dialog || !dialog->isVisible() || qobject_cast<BusyNotice*>(dialog))
        return;
    m_visited.removeIf([](const QPointer<QDialog>& each) { return each.isNull(); });
    if (!m_visited.contains(dialog)) {
        m_visited += dialog;
        m_sinceVisit.start();
        // From the event loop: a visit that opens another dialog must not keep this timer busy.
        QTimer::singleShot(0, dialog, [this, dialog] { visit(*dialog); });
    } else if (m_sinceVisit.elapsed() > patienceMs) {
        note(u"the dialog %1 stays open"_s.arg(describe(*dialog)));
        dialog->done(QDialog::Rejected);
    }
}

void DialogGuide::visit(QDialog& dialog)
{
    const QPointer<QDialog> stillThere(&dialog);
    if (m_expected.empty()) {
        note(u"unexpected dialog %1"_s.arg(describe(dialog)));
    } else {
        const Expected expected = std::exchange(m_expected.front(), {});
        m_expected.pop_front();
        if (!expected.objectName.isEmpty() && dialog.objectName() != expected.objectName)
            note(u"%1 was to open, not %2"_s.arg(expected.objectName, describe(dialog)));
        note(expected.visit(dialog));
    }
    // A question whether input is to be thrown away would be another dialog.
    if (stillThere && stillThere->isVisible())
        stillThere->done(QDialog::Rejected);
    m_visited.removeAll(stillThere);
    m_sinceVisit.start();
}

void DialogGuide::note(const Problem& problem)
{
    if (problem && !m_problem)
        m_problem = problem;
}

#include "support/ModalAnswerer.h"

#include <QApplication>
#include <QLabel>
#include <QTest>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int lookEveryMs = 10;

// A dialog that stays open after its answer and that no further expectation is meant for.
constexpr int patienceMs = 5000;

void fail(const QString& what)
{
    // Not the macro: it returns from the helper, and the test would go on as passed.
    QTest::qFail(qUtf8Printable(what), __FILE__, __LINE__);
}

QString plainText(const QAbstractButton* button)
{
    return button->text().remove(u'&');
}

ModalAnswerer::Seen describe(const QDialog* dialog)
{
    ModalAnswerer::Seen seen;
    seen.title = dialog->windowTitle();
    QStringList texts;
    for (const auto* label : dialog->findChildren<QLabel*>()) {
        if (!label->text().isEmpty())
            texts.append(label->text());
    }
    seen.text = texts.join(u'\n');
    for (const auto* button : dialog->findChildren<QAbstractButton*>()) {
        if (button->isVisible() && !button->text().isEmpty())
            seen.buttons.append(plainText(button));
    }
    return seen;
}

} // namespace

ModalAnswerer::ModalAnswerer()
{
    connect(&m_timer, &QTimer::timeout, this, &ModalAnswerer::look);
    m_timer.start(lookEveryMs);
}

ModalAnswerer::ModalAnswerer(const QString& button)
    : ModalAnswerer()
{
    expectButton(button);
}

ModalAnswerer::ModalAnswerer(std::function<void(QDialog*)> act)
    : ModalAnswerer()
{
    expect(std::move(act));
}

ModalAnswerer::~ModalAnswerer()
{
    if (!m_expected.empty())
        fail(u"%1 announced dialog(s) never opened"_s.arg(m_expected.size()));
}

void ModalAnswerer::expectButton(const QString& text)
{
    expect([text](QDialog* dialog) {
        if (QAbstractButton* button = buttonOf(dialog, text)) {
            button->click();
            return;
        }
        fail(u"The dialog \"%1\" has no button \"%2\""_s.arg(dialog->windowTitle(), text));
        dialog->reject();
    });
}

void ModalAnswerer::expect(std::function<void(QDialog*)> act)
{
    m_expected.push_back(std::move(act));
    // The same dialog may be answered once more.
    m_answered.clear();
}

QAbstractButton* ModalAnswerer::buttonOf(const QDialog* dialog, const QString& text)
{
    for (auto* button : dialog->findChildren<QAbstractButton*>()) {
        if (button->isVisible() && button->isEnabled() && plainText(button) == text)
            return button;
    }
    return nullptr;
}

void ModalAnswerer::look()
{
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    // A notice of work in progress asks nothing and goes by itself.
    if (!dialog || !dialog->isVisible() || dialog->objectName() == u"BusyNotice")
        return;
    // One that closes can let the dialog below be seen in the moment before that one closes too.
    const bool wasAnswered
        = dialog == m_answered || (m_expected.empty() && m_earlier.contains(dialog));
    if (!wasAnswered) {
        answer(dialog);
    } else if (m_sinceAnswer.elapsed() > patienceMs) {
        fail(u"The dialog \"%1\" stays open after its answer"_s.arg(dialog->windowTitle()));
        dialog->reject();
    }
}

void ModalAnswerer::answer(QDialog* dialog)
{
    m_answered = dialog;
    m_earlier.append(dialog);
    m_sinceAnswer.start();
    const Seen seen = describe(dialog);
    m_seen.append(seen);
    if (m_expected.empty()) {
        fail(u"Unexpected dialog \"%1\": %2"_s.arg(seen.title, seen.text));
        dialog->reject();
        return;
    }
    const auto act = std::move(m_expected.front());
    m_expected.pop_front();
    // From the event loop: a click that opens the next dialog must not keep this timer busy.
    QTimer::singleShot(0, dialog, [act, dialog] { act(dialog); });
}

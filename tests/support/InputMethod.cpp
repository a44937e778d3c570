#include "support/InputMethod.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QTest>

namespace InputMethod {

void commit(const QString& text)
{
    QWidget* field = QApplication::focusWidget();
    if (!field || !field->testAttribute(Qt::WA_InputMethodEnabled)) {
        QTest::qFail("No field that takes text has the keyboard", __FILE__, __LINE__);
        return;
    }
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(field, &event);
}

} // namespace InputMethod

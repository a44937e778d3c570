// The program with a pair of hands: at its first start it restores the backup folder that the
// environment names, through the settings page as an owner would. Started again it is left alone.

#include "app/Program.h"
#include "support/Hands.h"
#include "support/ModalAnswerer.h"

#include <QApplication>
#include <QPushButton>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

QWidget* mainWindow()
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() == u"MainWindow" && window->isVisible())
            return window;
    }
    return nullptr;
}

void answerDialogs(const QString& folder)
{
    // Lives until the program ends, which is before the last expectation could be missed.
    static auto* answers = new ModalAnswerer;
    answers->expect(Hands::choosePath(folder));
    answers->expectButton(u"继续恢复"_s);
    answers->expectButton(u"确认恢复（覆盖当前数据）"_s);
    answers->expectButton(u"确定"_s);
}

void restoreOnceShown(const QString& folder)
{
    auto* waiting = new QTimer(qApp);
    QObject::connect(waiting, &QTimer::timeout, qApp, [waiting, folder] {
        QWidget* window = mainWindow();
        if (!window)
            return;
        waiting->deleteLater();
        waiting->stop();
        answerDialogs(folder);
        for (auto* button : window->findChildren<QPushButton*>()) {
            if (button->text() == u"从备份恢复"_s)
                return button->click();
        }
    });
    waiting->start(20);
}

void lendHands()
{
    const QString folder = qEnvironmentVariable("BRIXA_TEST_RESTORE");
    qunsetenv("BRIXA_TEST_RESTORE");
    if (!folder.isEmpty())
        restoreOnceShown(folder);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(lendHands)

int main(int argc, char** argv)
{
    return Program::run(argc, argv);
}

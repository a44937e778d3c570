#include "widgets/TestCards.h"
#include "widgets/TestFields.h"
#include "widgets/TestMessages.h"

#include "theme/Theme.h"

#include <QApplication>

int main(int argc, char** argv)
{
    const QApplication app(argc, argv);
    Theme::instance().apply(ThemeMode::Light);
    return runTests<TestCards, TestFields, TestMessages>(argc, argv);
}

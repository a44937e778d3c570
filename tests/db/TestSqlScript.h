#pragma once

#include "support/TestCase.h"

class TestSqlScript final : public TestCase {
    Q_OBJECT

private slots:
    void scriptsAreCutIntoStatements_data();
    void scriptsAreCutIntoStatements();
    void lineCommentsAreRemoved_data();
    void lineCommentsAreRemoved();
};

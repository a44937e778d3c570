#pragma once

#include "support/TestCase.h"

/// Base of test classes that work on the program's database: each test function starts with a new
/// one and must be able to close it without leaving files of the write-ahead log behind.
class DatabaseTestCase : public TestCase {
    Q_OBJECT

protected slots:
    void init();
    void cleanup();
};

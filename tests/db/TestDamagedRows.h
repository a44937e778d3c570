#pragma once
#include "support/DatabaseTestCase.h"
class TestDamagedRows final : public DatabaseTestCase {
    Q_OBJECT
};

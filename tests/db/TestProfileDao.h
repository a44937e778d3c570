#pragma once
#include "support/DatabaseTestCase.h"
class TestProfileDao final : public DatabaseTestCase {
    Q_OBJECT
};

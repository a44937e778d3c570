#pragma once
#include "support/DatabaseTestCase.h"
class TestProjectDao final : public DatabaseTestCase {
    Q_OBJECT
};

#pragma once
#include "support/DatabaseTestCase.h"
class TestTransactionDao final : public DatabaseTestCase {
    Q_OBJECT
};

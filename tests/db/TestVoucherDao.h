#pragma once
#include "support/DatabaseTestCase.h"
class TestVoucherDao final : public DatabaseTestCase {
    Q_OBJECT
};

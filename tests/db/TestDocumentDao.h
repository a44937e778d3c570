#pragma once
#include "support/DatabaseTestCase.h"
class TestDocumentDao final : public DatabaseTestCase {
    Q_OBJECT
};

#include "db/TestDamagedRows.h"

#include "db/TestTransactionDao.h"

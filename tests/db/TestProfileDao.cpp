#include "db/TestProfileDao.h"

#include "db/TestProjectDao.h"

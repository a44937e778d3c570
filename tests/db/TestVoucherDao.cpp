#include "db/TestVoucherDao.h"

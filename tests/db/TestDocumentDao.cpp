#include "db/TestDocumentDao.h"

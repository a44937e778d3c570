#pragma once

#include "pages/PageId.h"

class IPage;
class QWidget;

/// Builds the page of an identifier as a child of `parent`; none for any other value.
IPage* createPage(PageId id, QWidget* parent);

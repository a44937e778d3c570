#pragma once

#include "pages/IPage.h"

/// Stands in the place of a page whose work is not available yet and says what it will do.
class UpcomingPage final : public IPage {
    Q_OBJECT

public:
    struct Content {
        QString title;
        QString icon;
        QString text;
    };
    explicit UpcomingPage(const Content& content, QWidget* parent = nullptr);
};

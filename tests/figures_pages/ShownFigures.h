#pragma once

#include "pages/IPage.h"
#include "widgets/StatCard.h"

#include <QSignalSpy>

/// A page of figures as the window shows it, and what it asks of the window.
template <typename Page> struct ShownFigures {
    ShownFigures()
        : asked(&page, &IPage::navigateRequested)
    {
        page.resize(1000, 900);
        page.show();
        page.refresh();
    }

    StatCard* card(const QString& title) const
    {
        for (auto* card : page.template findChildren<StatCard*>()) {
            if (card->text() == title)
                return card;
        }
        return nullptr;
    }

    Page page;
    QSignalSpy asked;
};

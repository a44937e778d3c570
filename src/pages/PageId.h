#pragma once

#include <QString>
#include <QVariantMap>

/// A page of the main window. The value is its index in the page stack and in the navigation bar.
enum class PageId { Dashboard, Ledger, Documents, Projects, Vouchers, Reports, Settings };

inline constexpr int pageCount = 7;

/// What a page hands to the page it asks for; the keys are defined by the page that reads them.
using NavParams = QVariantMap;

/// How a page is named in the navigation bar.
struct PageLabel {
    QString text; // Chinese
    QString icon; // name of an icon
};

PageLabel pageLabel(PageId id);

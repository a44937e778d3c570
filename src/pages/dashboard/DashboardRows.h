#pragma once

#include "db/Project.h"
#include "pages/PageId.h"
#include "services/figures/DashboardBanners.h"
#include "services/figures/DashboardFigures.h"
#include "services/figures/TodoList.h"
#include "widgets/RowButton.h"

/// How the dashboard's rows look and where they lead. Pure functions.
namespace DashboardRows {

struct Destination {
    PageId page = PageId::Dashboard;
    NavParams params;
};

[[nodiscard]] RowButton::Content todoRow(const TodoList::Item& item);
[[nodiscard]] Destination destinationOf(const TodoList::Item& item);

[[nodiscard]] RowButton::Content entryRow(const Transaction& entry);
[[nodiscard]] RowButton::Content projectRow(const Project& project);

/// The three steps of a new company; those that are done carry a tick.
[[nodiscard]] QList<RowButton::Content> stepRows(const DashboardFigures::Steps& steps);
[[nodiscard]] Destination destinationOfStep(int step);

/// What the button of a banner says.
[[nodiscard]] QString actionOf(DashboardBanners::Target target);
[[nodiscard]] Destination destinationOf(DashboardBanners::Target target);

/// The ledger with the entries of some days.
[[nodiscard]] Destination ledgerOf(const DateRange& range);

} // namespace DashboardRows

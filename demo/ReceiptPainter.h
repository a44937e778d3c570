#pragma once

#include "db/CompanyProfile.h"
#include "db/Contract.h"
#include "db/Project.h"
#include "db/Transaction.h"

#include <QSize>

class QPainter;

/// Draws the papers of a small company as they come from banks, tax offices and clients. Sheets are
/// measured in points of their own; the painter is scaled by the caller.
namespace ReceiptPainter {

inline constexpr QSize bankReceiptSize { 1000, 560 };
inline constexpr QSize invoiceSize { 1000, 640 };
inline constexpr QSize pageSize { 794, 1123 }; // a sheet of A4
inline constexpr QSize chatSize { 540, 960 };

void drawBankReceipt(QPainter& painter, const CompanyProfile& company, const Transaction& entry);
void drawInvoice(QPainter& painter, const CompanyProfile& company, const Transaction& entry);
void drawContract(QPainter& painter, const CompanyProfile& company, const Contract& contract);
void drawDelivery(QPainter& painter, const CompanyProfile& company, const Project& project);
void drawChat(QPainter& painter, const Transaction& entry);

} // namespace ReceiptPainter

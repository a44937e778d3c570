#pragma once

#include <QString>
#include <QStringList>

/// What an annual decision says about the profit of its year.
enum class ProfitPlan { Kept, Distributed, NotDecided };

/// What the user chose and wrote for an annual decision.
struct AnnualChoices {
    int year = 0;
    bool operatingReport = true;
    bool financialReport = true;
    ProfitPlan profit = ProfitPlan::Kept;
    qint64 profitFen = 0; // when distributed
    QString method; // when distributed
    QStringList others; // in the user's own words; blank ones count as absent
};

/// Makes the sentences of an annual decision from the choices on a form. Pure.
namespace AnnualItems {

/// The finished sentences in the order of the document. A distribution that is not complete is
/// left out.
QStringList sentences(const AnnualChoices& choices);

/// What is missing in the choices before there can be sentences, in Chinese; empty when nothing.
QString firstProblem(const AnnualChoices& choices);

} // namespace AnnualItems

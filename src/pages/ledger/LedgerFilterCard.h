#pragma once

#include "db/Transaction.h"
#include "services/figures/Period.h"

#include <QWidget>

class Card;
class DateRangeFields;
class QComboBox;
class QHBoxLayout;
class QLineEdit;

/// What the user looks for in the ledger. Choosing something searches nothing by itself; the
/// button and Enter in a field ask for it.
class LedgerFilterCard final : public QWidget {
    Q_OBJECT

public:
    explicit LedgerFilterCard(QWidget* parent = nullptr);

    /// What the fields ask for. Fields that hold no day count as open.
    TransactionFilter filter() const;
    /// Why the fields cannot be searched by, in Chinese; empty when they can.
    QString problem() const;

    DateRange range() const;
    void setRange(const DateRange& range);
    void setCategory(std::optional<Category> category);
    void setRisk(std::optional<RiskLevel> level);
    void clear();

    void focusKeyword();

signals:
    void searchRequested();
    void resetRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildFields();
    void addField(QHBoxLayout* line, const QString& label, QWidget* field, int stretch = 0);

    Card* m_card;
    DateRangeFields* m_range;
    QComboBox* m_owner;
    QComboBox* m_category;
    QComboBox* m_risk;
    QLineEdit* m_keyword;
};

#pragma once

#include "pages/documents/DocumentForm.h"
#include "services/documents/AnnualItems.h"

class AmountField;
class Banner;
class Card;
class DateEditor;
class FreeItemList;
class QCheckBox;
class QComboBox;
class QLabel;
class QRadioButton;
class QSpinBox;

/// The annual decision of the owner: year, reports, profit and whatever else is decided.
class AnnualForm final : public DocumentForm {
    Q_OBJECT

public:
    explicit AnnualForm(QWidget* parent = nullptr);

    void refresh() override;

    /// A year outside the range of the form becomes its nearest.
    void setYear(int year);

protected:
    QWidget* firstField() const override;
    QString firstProblem() const override;
    bool confirm() override;
    QString previewHtml() const override;
    DocumentResult generate() override;
    void prepareNext() override;

private:
    Card* buildYearCard();
    Card* buildItemCard();
    QWidget* buildDistribution();
    AnnualChoices choices() const;
    AnnualDecisionInput input() const;
    void onChanged();
    void followYear();
    void showExisting();
    /// Whether the year has a decision already; nothing when it cannot be found out.
    std::optional<bool> hasDecision();

    QSpinBox* m_year = nullptr;
    int m_usualYear = 0;
    DateEditor* m_date = nullptr;
    Banner* m_existing = nullptr;
    QCheckBox* m_operatingReport = nullptr;
    QCheckBox* m_financialReport = nullptr;
    QRadioButton* m_kept = nullptr;
    QRadioButton* m_distributed = nullptr;
    QRadioButton* m_notDecided = nullptr;
    QWidget* m_distribution = nullptr;
    AmountField* m_profit = nullptr;
    QLabel* m_capitals = nullptr;
    QComboBox* m_method = nullptr;
    FreeItemList* m_others = nullptr;
};

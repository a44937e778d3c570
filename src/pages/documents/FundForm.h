#pragma once

#include "pages/documents/DocumentForm.h"

class Banner;
class DateEditor;
class FundEntryPicker;
class QComboBox;
class QPlainTextEdit;
class QRadioButton;
class Card;

/// The decision on money that passes between the company and its owner.
class FundForm final : public DocumentForm {
    Q_OBJECT

public:
    explicit FundForm(QWidget* parent = nullptr);

    void refresh() override;

    /// Ticks these entries in place of those ticked before, and says which cannot be taken. Takes
    /// effect with the next refresh.
    void request(const QList<qint64>& entryIds);

protected:
    QWidget* firstField() const override;
    QString firstProblem() const override;
    bool isLong() const override;
    QString previewHtml() const override;
    DocumentResult generate() override;
    void prepareNext() override;

private:
    Card* buildPurposeCard();
    Card* buildEntryCard();
    Card* buildTermsCard();
    void setDirection(Direction direction);
    /// Offers what money of the direction usually is; the user's own words stay.
    void offerNatures(Direction before);
    QString takeRequest();
    void showForeign();
    FundDecisionInput input() const;

    QRadioButton* m_in = nullptr;
    QRadioButton* m_out = nullptr;
    QComboBox* m_nature = nullptr;
    Banner* m_foreign = nullptr;
    FundEntryPicker* m_entries = nullptr;
    DateEditor* m_date = nullptr;
    DateEditor* m_settleDate = nullptr;
    QPlainTextEdit* m_extra = nullptr;
    QList<qint64> m_requested;
};

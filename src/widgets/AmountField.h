#pragma once

#include <QDoubleSpinBox>

/// An amount in yuan with two decimals. Grouping commas, signs of the currency, blanks and
/// full-width digits, as they come from bank statements and input methods, are understood and
/// tidied away. An emptied field is 0, not the amount that was deleted.
class AmountField final : public QDoubleSpinBox {
    Q_OBJECT

public:
    explicit AmountField(QWidget* parent = nullptr);

    qint64 amountFen() const;
    void setAmountFen(qint64 fen);

    QValidator::State validate(QString& input, int& position) const override;
    double valueFromText(const QString& text) const override;

protected:
    void focusInEvent(QFocusEvent* event) override;
};

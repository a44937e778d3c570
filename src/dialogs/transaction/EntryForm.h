#pragma once

#include "db/Transaction.h"
#include "services/entries/EntryRules.h"

#include <QWidget>

class AmountField;
class DateEditor;
class FormRows;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QRadioButton;
class TextCount;

/// The fields of a ledger entry, two in a line where they are short.
class EntryForm final : public QWidget {
    Q_OBJECT

public:
    explicit EntryForm(QWidget* parent = nullptr);

    /// Shows the entry and offers the projects that it may belong to.
    void showEntry(const Transaction& entry);
    /// From now on a choice that the user has not made follows from what was filled in: the
    /// category from the direction, the counterparty's account from how it was last registered.
    void enableSuggestions();

    /// The given entry with the fields as they now stand, normalised.
    Transaction edited(Transaction entry) const;

    /// Puts the cursor into a field.
    void focus(EntryRules::Field field);

signals:
    /// Any field has another value, whoever changed it.
    void changed();

private:
    void buildRows();
    void buildTexts(FormRows* rows);
    QWidget* buildDirections();
    void connectSignals();
    void fillProjects(const std::optional<qint64>& chosen);
    void showAmountInWords();
    Direction direction() const;

    DateEditor* m_date;
    QRadioButton* m_in = nullptr;
    QRadioButton* m_out = nullptr;
    AmountField* m_amount;
    QLabel* m_amountInWords = nullptr;
    QComboBox* m_owner;
    QComboBox* m_category;
    QComboBox* m_project;
    QLineEdit* m_counterparty;
    QComboBox* m_counterpartyAccount;
    QLineEdit* m_summary;
    TextCount* m_summaryCount;
    QPlainTextEdit* m_note;
    TextCount* m_noteCount;
    QList<Counterparty> m_known;
};

#include "dialogs/transaction/EntrySuggestions.h"

#include "core/CodeTable.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QScopedValueRollback>

EntrySuggestions::EntrySuggestions(
    const Fields& fields, const QList<Counterparty>& known, QObject* parent)
    : QObject(parent)
    , m_fields(fields)
    , m_untouched({ fields.category, fields.counterpartyAccount })
{
    for (const Counterparty& counterparty : known)
        m_accounts.insert(counterparty.name, counterparty.accountType);
    connect(fields.outgoing, &QRadioButton::toggled, this, &EntrySuggestions::suggestCategory);
    connect(fields.counterparty, &QLineEdit::textChanged, this, &EntrySuggestions::suggestAccount);
    for (QComboBox* combo : m_untouched) {
        // Also what is picked a second time is the user's choice.
        connect(
            combo, &QComboBox::activated, this, [this, combo] { m_untouched.removeAll(combo); });
        connect(combo, &QComboBox::currentIndexChanged, this, [this, combo] {
            if (!m_suggesting)
                m_untouched.removeAll(combo);
        });
    }
}

void EntrySuggestions::suggest(QComboBox* combo, const QString& code)
{
    if (!m_untouched.contains(combo))
        return;
    const QScopedValueRollback guard(m_suggesting, true);
    combo->setCurrentIndex(combo->findData(code));
}

void EntrySuggestions::suggestCategory()
{
    suggest(m_fields.category,
        codeOf(
            m_fields.outgoing->isChecked() ? Category::BusinessExpense : Category::BusinessIncome));
}

void EntrySuggestions::suggestAccount()
{
    const QString name = m_fields.counterparty->text().trimmed();
    suggest(m_fields.counterpartyAccount, codeOf(m_accounts.value(name, AccountType::Unknown)));
}

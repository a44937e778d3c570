#pragma once

#include "db/Transaction.h"

#include <QHash>
#include <QObject>

class QComboBox;
class QLineEdit;
class QRadioButton;

/// Fills in the choices of a new entry that mostly follow from others, until the user has made
/// them: what a person chose is never changed.
class EntrySuggestions final : public QObject {
    Q_OBJECT

public:
    struct Fields {
        QRadioButton* outgoing;
        QComboBox* category;
        QLineEdit* counterparty;
        QComboBox* counterpartyAccount;
    };

    EntrySuggestions(const Fields& fields, const QList<Counterparty>& known, QObject* parent);

private:
    void suggest(QComboBox* combo, const QString& code);
    void suggestCategory();
    void suggestAccount();

    Fields m_fields;
    QHash<QString, AccountType> m_accounts; // by the counterparty's name
    QList<QComboBox*> m_untouched;
    bool m_suggesting = false;
};

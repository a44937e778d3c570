#pragma once

#include "db/CompanyProfile.h"
#include "services/ProfileRules.h"

#include <QObject>

#include <array>

class FormRows;
class QLabel;
class QLineEdit;

/// The editors of a company profile's texts, laid out by whoever shows them. The credit code is
/// put into capitals while it is typed; a code that does not check out is remarked under it.
class ProfileForm final : public QObject {
    Q_OBJECT

public:
    enum class Text {
        CompanyName,
        CreditCode,
        ShareholderName,
        BankName,
        BankAccount,
        Address,
        Phone
    };

    explicit ProfileForm(QWidget* parent);

    void addRow(FormRows* rows, Text text);

    /// Shows the profile's texts.
    void show(const CompanyProfile& profile);
    /// The given profile with the texts as they now stand, normalised.
    CompanyProfile edited(CompanyProfile profile) const;
    /// Puts the cursor where the problem is.
    void focus(ProfileRules::Field field);

private:
    static constexpr std::size_t textCount = 7;

    QLineEdit* edit(Text text) const { return m_edits.at(static_cast<std::size_t>(text)); }
    QWidget* withRemark(QLineEdit* edit);
    void checkCreditCode(const QString& typed);

    std::array<QLineEdit*, textCount> m_edits {};
    QLabel* m_creditCodeRemark = nullptr;
};

#pragma once

#include "services/ProfileRules.h"

#include <QMap>
#include <QObject>

class FormRows;
class QLabel;
class QLineEdit;
class QWidget;

/// The editors of a company profile's texts, laid out by whoever shows them. The credit code is
/// put into capitals while it is typed; a code that does not check out is remarked under it.
class ProfileForm final : public QObject {
    Q_OBJECT

public:
    explicit ProfileForm(QWidget* parent);

    void addRow(FormRows* rows, ProfileRules::Field field);

    /// Shows the profile's texts.
    void show(const CompanyProfile& profile);
    /// The given profile with the texts as they now stand, normalised.
    CompanyProfile edited(CompanyProfile profile) const;
    /// Puts the cursor into a field.
    void focus(ProfileRules::Field field);

private:
    QWidget* withRemark(QLineEdit* edit);
    void checkCreditCode(const QString& code);

    QMap<ProfileRules::Field, QLineEdit*> m_edits;
    QLabel* m_creditCodeRemark = nullptr;
};

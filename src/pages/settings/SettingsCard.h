#pragma once

#include "db/CompanyProfile.h"
#include "widgets/Card.h"

#include <optional>

class QHBoxLayout;

/// A card of the settings page: one subject, with what is stored about it and what can be done.
class SettingsCard : public Card {
    Q_OBJECT

public:
    using Card::Card;

    /// Shows what is stored in the profile. Not called while that cannot be read.
    virtual void showProfile(const CompanyProfile& profile);

    /// Shows everything else anew.
    virtual void refresh();

    /// Gives the keyboard to the first control that can take it.
    void focusFirstControl();

signals:
    /// The stored profile has changed, or could not be read.
    void profileChanged();
    /// Something that the status bar shows has changed.
    void statusChanged();

protected:
    /// Plain, wrapping text.
    QLabel* makeText(const QString& text = {});
    /// The same with text that can be selected.
    QLabel* makeValue();
    /// Shows a text whose subject stands beside it; assistive technology hears both.
    static void setValue(QLabel* value, const QString& subject, const QString& text);
    /// A line of buttons at the end of the card.
    QHBoxLayout* addButtonLine();

    /// The profile as it is stored now; the page is told when it cannot be read.
    std::optional<CompanyProfile> readProfile();
};

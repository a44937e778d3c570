#pragma once

#include "support/TestCase.h"

class TestDocumentTexts final : public TestCase {
    Q_OBJECT

private slots:
    void offeredSentences();
    void itemsAreNumberedInChinese_data();
    void itemsAreNumberedInChinese();
    void usersTextsAreNeverMarkup_data();
    void usersTextsAreNeverMarkup();
    void theAnnualDecisionReads();
    void theFundDecisionReads();
    void theIndependenceStatementReads();
    void optionalPartsAreLeftOut();
    void annualInputIsChecked_data();
    void annualInputIsChecked();
    void fundInputIsChecked_data();
    void fundInputIsChecked();
    void independenceInputIsChecked_data();
    void independenceInputIsChecked();
    void selectionsAreReadBack();
    void columnsShareTheWidth_data();
    void columnsShareTheWidth();
};

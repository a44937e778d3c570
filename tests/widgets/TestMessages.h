#pragma once

#include "support/TestCase.h"

class TestMessages final : public TestCase {
    Q_OBJECT

private slots:
    void bannerShowsTextAsTyped();
    void bannerActionAndCloseReport();
    void bannerKindsLookDifferent();
    void toastNeverTakesTheKeyboard();
    void toastGoesByItself();
    void toastWaitsUnderThePointer();
    void onlyThreeToastsStand();
    void toastsFollowTheWindow();
    void splashPaintsAtOnce();
    void splashFinishesOnce_data();
    void splashFinishesOnce();
    void boxShowsTitleAndTextAsTyped_data();
    void boxShowsTitleAndTextAsTyped();
    void questionIsAnsweredByItsButton();
    void escapeAndCloseReject_data();
    void escapeAndCloseReject();
    void enterPressesTheDefaultButton_data();
    void enterPressesTheDefaultButton();
    void longTextWrapsInsideTheBox();
    void missingBoxFailsTheTest();
    void unannouncedBoxFailsTheTest();
};

#pragma once

#include "support/TestCase.h"

class TestCards final : public TestCase {
    Q_OBJECT

private slots:
    void plainCardIsNoButton();
    void navigableCardIsAButton_data();
    void navigableCardIsAButton();
    void cardTellsItsFigure();
    void longFigureKeepsItsLastDigit();
    void badgeTextNamesLevelAndOverride_data();
    void badgeTextNamesLevelAndOverride();
    void badgesDifferWithoutColour();
    void badgeStaysInsideItsCell();
    void navButtonShowsTheCurrentPage();
    void emptyStateOffersItsAction();
    void emptyStateShowsLongTextsWhole();
    void elidedLabelKeepsItsWholeText();
    void titledCardShowsItsHead();
    void selectedRowKeepsAmountColour();
    void tablesAreSetUpAlike();
    void calendarIsChineseAndStartsOnMonday();
};

#pragma once

#include "support/TestCase.h"

class TestMainWindow final : public TestCase {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void startsOnTheDashboard();
    void everyPageIsReachedByButtonAndKey_data();
    void everyPageIsReachedByButtonAndKey();
    void assistiveTechnologySwitchesPages();
    void parametersArriveBeforeTheRefresh();
    void unknownPagesAreIgnored_data();
    void unknownPagesAreIgnored();
    void aRequestDuringARefreshIsDropped();
    void theCurrentPageIsRefreshedAgain();
    void headerActionsBelongToTheirPage();
    void statusBarFollowsTheProfile();
    void theRealPagesStandInTheirPlaces();
    void themeReachesTheFrame();
};

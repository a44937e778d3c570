#pragma once

class Findings;

/// The part of the self-check that needs windows: a main window of its own, never shown, is led
/// through all its pages, so that the one in use keeps its page, its input and its focus.
void checkPageSwitching(Findings& findings);

#pragma once

/// How the running program comes to its end on its own account.
namespace ProgramEnd {

/// The exit status by which the main function knows that it is to start the program anew.
inline constexpr int restartStatus = 64;

/// Ends the event loop; once everything is closed the program starts again.
void restart();

/// Ends the event loop after a failure that the user has been told of.
void afterFailure();

} // namespace ProgramEnd

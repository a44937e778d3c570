#pragma once

namespace Program {

/// The whole program from the application object to the exit status. After a restore it starts
/// itself again, once everything is closed.
int run(int argc, char** argv);

} // namespace Program

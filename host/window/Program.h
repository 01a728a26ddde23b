// The window program from its arguments to its exit status.
//
// hnmanager-window [--device DIR] [--category NAME] [--theme light|dark] [--rtl] [--screenshot FILE.png]
//
// Status   0 ended by the person or picture written; 1 the picture could not be written; 2 wrong usage; 3 the device or the
//          plug-in cannot be opened. Messages of the start go to standard error too, since no window may come.
#pragma once

namespace host {

[[nodiscard]] int runWindowProgram(int argc, char **argv);

}  // namespace host

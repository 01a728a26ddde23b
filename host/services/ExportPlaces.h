// Message exports to places that the flow's commands cannot take: a blank, a quote, a shell character in a table's path, a
// single quote in a page's. The save panel gives the flow a private place then (see PrivateTarget), and what the flow made
// moves to the person's place when its progress window closes, when the flow opens the folder, at the next panel, or at the
// end.
//
// Errors   a move that fails is told to `warn`.
// Threads  main.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "toolkit/services/NSWorkspace.h"

namespace host {

class ExportPlaces {
public:
    static void install(std::function<void(const std::string &)> warn);
    // Moves what still waits.
    static void remove();
    // Opens the person's place where the flow asks for the private one.
    [[nodiscard]] static std::shared_ptr<WorkspaceService> opener(std::shared_ptr<WorkspaceService> service);
};

}  // namespace host

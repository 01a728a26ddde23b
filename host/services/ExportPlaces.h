// Where the exports of a window go until they are whole. Message exports go by way of a private place (see PrivateTarget),
// which takes any path: what the flow made moves to the person's place when its progress window closes, when the flow opens
// the folder, at the next panel, or at the end; an empty table or half a page never does. The file that a bookmark export
// replaces is settled when the result closes.
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
    // A text in which the last private place bears the name of the person's.
    [[nodiscard]] static NSString forPeople(const NSString &text);
};

}  // namespace host

// Opens files and web addresses in the user's own programs, by xdg-open, started directly and never through a shell.
// A path goes to it as a file: address, so that no name can pass for an option or an address; of addresses only http,
// https, ftp, mailto and those that begin with "www." are opened. Threads: any.
#pragma once

#include <functional>
#include <string>

#include "toolkit/services/NSWorkspace.h"

namespace host {

class WorkspaceOpener : public WorkspaceService {
public:
    // `program` is looked for in PATH.
    explicit WorkspaceOpener(std::string program = "xdg-open") : program_(std::move(program)) {}

    bool openFile(const NSString &path) override;
    bool openURL(const NSString &address) override;
    // Hears the path or address of what could not be opened, on any thread, also after the call: the program may find
    // only later that nothing opens it. Empty: nobody.
    static void setFailureListener(std::function<void(const std::string &what)> listener);
    // "file:///tmp/a%20b"; the path is made absolute.
    [[nodiscard]] static std::string addressOf(const NSString &path);

private:
    bool start(const std::string &argument, const std::string &what);
    std::string program_;
};

}  // namespace host

// Opens files and web addresses in the user's own programs, never through a shell. A host installs who does it.
#pragma once

#include <memory>
#include <mutex>

#include "toolkit/NSString.h"

class WorkspaceService {
public:
    virtual ~WorkspaceService() = default;
    // False where nothing could be started. Any thread.
    virtual bool openFile(const NSString &path) = 0;
    virtual bool openURL(const NSString &address) = 0;
};

class NSWorkspace {
public:
    [[nodiscard]] static NSWorkspace &sharedWorkspace();
    void install(std::shared_ptr<WorkspaceService> service);
    bool openFile(const NSString &path);
    bool openURL(const NSString &address);
    // A local media file in the system's player; an absent path does nothing.
    void openMedia(const NSString &path);

private:
    std::shared_ptr<WorkspaceService> service();
    std::mutex mutex_;
    std::shared_ptr<WorkspaceService> service_;
};

// A world for the flows: a fake device, a log of what a person sees and does, a folder of its own on disk.
#pragma once

#include "HNManagerPlugin/contracts/RVFoundation/RVFileManageCommon.h"
#include "tests/support/AnswerScript.h"
#include "tests/support/FakeDevice.h"
#include "tests/support/PluginWorld.h"
#include "tests/support/TempFolder.h"
#include "toolkit/services/NSLog.h"

class FlowWorld {
public:
    FlowWorld() { logWorkspaceTo(log); }
    ~FlowWorld() { RVSystemInfoManager::setAvailableMemoryQuery({}); }
    // Notes each line of the log that ends with `text`, without the place in the source that stands before it.
    void noteLogLine(std::string text) {
        setLogSink([this, text = std::move(text)](const NSString &line) {
            if (line.hasSuffix(text))
                log.add(text);
        });
    }
    [[nodiscard]] const std::string &folder() const { return folder_; }

    PluginWorld world;
    EventLog log;
    FakeDevice device;

private:
    TempFolder temporary_;
    std::string folder_ = temporary_.path().string();
};

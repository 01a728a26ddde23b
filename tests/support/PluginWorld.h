// A world with the plug-in in it: fresh application, notices, hooks and settings, the plug-in's own resources, texts
// that read as their keys, and whatever device a test installs.
#pragma once

#include "tests/support/EventLog.h"
#include "tests/support/TestWorld.h"
#include "toolkit/services/StringsFile.h"

class PluginWorld {
public:
    PluginWorld();
    ~PluginWorld();

    // Texts of the table "localization"; every other key reads as itself.
    void setTexts(TextTable texts);
    void settle() { world_.settle(); }
    [[nodiscard]] TestWorld &world() { return world_; }
    // The usage events and the lines of the system log, as far as a test asks for them.
    void logUsageTo(EventLog &log);
    void logLinesTo(EventLog &log, std::string_view prefix);

private:
    TestWorld world_;
};

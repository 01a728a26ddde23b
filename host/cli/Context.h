// What a command works with: options, console, and, made when first asked for, services, device and plug-in.
// One per process. Threads: main, but for `interrupted`.
#pragma once

#include <memory>
#include <optional>

#include "HNManagerPlugin/contracts/RVFoundation/FatalParseFailure.h"
#include "host/cli/CliPresenter.h"
#include "host/cli/Console.h"
#include "host/cli/Interrupts.h"
#include "host/cli/Options.h"
#include "host/cli/PluginSession.h"
#include "host/cli/ProgressBar.h"
#include "host/services/Services.h"

namespace host::cli {

class Context {
public:
    Context(Options options, Console &console);
    ~Context();
    Context(const Context &) = delete;

    [[nodiscard]] const Options &options() const { return options_; }
    [[nodiscard]] Console &console() const { return console_; }
    [[nodiscard]] Services &services();
    // The device that the options name, opened. Throws device::OpenError.
    [[nodiscard]] device::Session &device();
    // The plug-in, on the device.
    [[nodiscard]] PluginSession &plugin();
    // The plug-in with whatever device there is by now, none too.
    [[nodiscard]] PluginSession &pluginAlone();
    [[nodiscard]] CliPresenter &presenter() { return *presenter_; }

    // Runs a flow of the plug-in to its end and all that it began. What escapes from it is kept for `fatal` and
    // `failures`, never thrown.
    void run(const std::function<void()> &flow);
    // The file that a reader could not go on with; absent without one.
    [[nodiscard]] const std::optional<FatalParseFailure> &fatal() const { return fatal_; }
    // Why a gate refused; absent where none did.
    [[nodiscard]] std::optional<device::AccessError::Kind> gateRefusal() const { return gateRefusal_; }
    // Something escaped from a flow that is no fatal parse failure. It has been told.
    [[nodiscard]] bool hasFailed() const { return hasFailed_; }
    // What the device really did since the last `run` began.
    [[nodiscard]] OperationCounts counts() { return services().deviceLayer()->record()->counts(); }

private:
    void tellFailure(const char *what, const std::exception_ptr &failure);
    void interrupt();

    Options options_;
    Console &console_;
    std::shared_ptr<CliPresenter> presenter_;
    std::shared_ptr<ProgressBar> progress_;
    std::unique_ptr<Interrupts> interrupts_;
    std::unique_ptr<Services> services_;
    std::shared_ptr<device::Session> device_;
    std::unique_ptr<PluginSession> plugin_;
    std::mutex mutex_;   // of what the guard tells, on any thread
    std::optional<FatalParseFailure> fatal_;
    std::optional<device::AccessError::Kind> gateRefusal_;
    bool hasFailed_ = false, isInFlow_ = false;
};

}  // namespace host::cli

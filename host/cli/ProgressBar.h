// The progress window of a flow as one line of the terminal: its main label, a bar, per cent.
// Threads  main.
#pragma once

#include "host/cli/Console.h"
#include "toolkit/views/ViewObserver.h"

namespace host::cli {

class ProgressBar : public ViewObserver {
public:
    explicit ProgressBar(Console &console) : console_(console) {}
    void propertyChanged(NSView &view, std::string_view key) override;
    // "Importing 3 of 9  [######------------]  33 %", never wider than `columns`.
    [[nodiscard]] static std::string lineOf(const std::string &label, double percent, std::size_t columns);

private:
    Console &console_;
    std::string shown_;
};

}  // namespace host::cli

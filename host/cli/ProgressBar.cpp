#include "host/cli/ProgressBar.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>

#include "HNManagerPlugin/contracts/RVUIKit/RUIProgressWindowController.h"
#include "host/cli/TerminalWidth.h"

namespace host::cli {

namespace {

constexpr std::size_t kBarWidth = 24, kUsualColumns = 80;

std::size_t columnsOfTerminal() {
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsualColumns;
}

}  // namespace

std::string ProgressBar::lineOf(const std::string &label, double percent, std::size_t columns) {
    const double part = std::isfinite(percent) ? std::clamp(percent, 0.0, 100.0) : 0.0;
    const auto full = static_cast<std::size_t>(part * kBarWidth / 100.0);
    std::string number = std::to_string(static_cast<int>(part));
    number.insert(0, 3 - number.size(), ' ');
    const std::string bar = "  [" + std::string(full, '#') + std::string(kBarWidth - full, '-') + "] " + number + " %";
    if (columns <= bar.size())
        return number + " %";
    // The last column stays free: a terminal may wrap there.
    const std::size_t room = columns - bar.size() - 1;
    return std::string(cutToWidth(forPeople(NSString(label)), room)) + bar;
}

void ProgressBar::propertyChanged(NSView &view, std::string_view) {
    const auto window = view.window();
    const auto progress = window ? std::dynamic_pointer_cast<RUIProgressWindowController>(window->windowController()) : nullptr;
    if (!progress || progress->isClosed())
        return;
    const double percent = progress->progressIndicator() ? progress->progressIndicator()->doubleValue() : 0;
    std::string line = lineOf(progress->mainText().str(), percent, columnsOfTerminal());
    if (line == shown_)
        return;
    shown_ = std::move(line);
    console_.progress(shown_);
}

}  // namespace host::cli

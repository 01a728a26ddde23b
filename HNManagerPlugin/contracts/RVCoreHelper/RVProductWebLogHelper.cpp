#include "HNManagerPlugin/contracts/RVCoreHelper/RVProductWebLogHelper.h"

#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "toolkit/dispatch/Guard.h"

struct RVProductWebLogHelper::State {
    std::mutex mutex;
    std::function<void(const NSString &, const NSString &, const NSString &)> sink;
};

RVProductWebLogHelper::State &RVProductWebLogHelper::state() {
    static auto *shared = new State;
    return *shared;
}

RVProductWebLogHelper &RVProductWebLogHelper::shareInstance() {
    static auto *helper = new RVProductWebLogHelper;
    return *helper;
}

void RVProductWebLogHelper::asyncSendGALog_andSubEvent_withResult(const NSString &event, const NSString &subEvent, const NSString &result) {
    std::function<void(const NSString &, const NSString &, const NSString &)> sink;
    {
        const std::scoped_lock lock(state().mutex);
        sink = state().sink;
    }
    if (sink)
        sink(event, subEvent, result);
}

void RVProductWebLogHelper::setSink(std::function<void(const NSString &, const NSString &, const NSString &)> sink) {
    const std::scoped_lock lock(state().mutex);
    state().sink = std::move(sink);
}

namespace {

struct Hooks {
    std::mutex mutex;
    std::map<std::string, std::vector<std::function<void()>>, std::less<>> blocks;
};

Hooks &hooks() {
    static auto *shared = new Hooks;
    return *shared;
}

std::string keyOf(std::string_view className, std::string_view selector) {
    return std::string(className).append(" ").append(selector);
}

}  // namespace

void AspectHooks::aspect_hookSelector_withOptions_usingBlock(std::string_view className, std::string_view selector, int,
                                                             std::function<void()> block) {
    const std::scoped_lock lock(hooks().mutex);
    hooks().blocks[keyOf(className, selector)].push_back(std::move(block));
}

void AspectHooks::enter(std::string_view className, std::string_view selector) {
    std::vector<std::function<void()>> attached;
    {
        const std::scoped_lock lock(hooks().mutex);
        if (const auto found = hooks().blocks.find(keyOf(className, selector)); found != hooks().blocks.end())
            attached = found->second;
    }
    for (const auto &block : attached)
        dispatch::guarded("a usage hook", block);
}

void AspectHooks::reset() {
    const std::scoped_lock lock(hooks().mutex);
    hooks().blocks.clear();
}

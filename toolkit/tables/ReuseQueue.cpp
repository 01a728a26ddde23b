#include "toolkit/tables/ReuseQueue.h"

#include <utility>

std::shared_ptr<NSView> ReuseQueue::take(const NSString &identifier) {
    auto &waiting = waiting_[identifier];
    if (!waiting.empty()) {
        // The one that has waited longest: after a reload each row gets its own view back, with what that keeps from its making.
        std::shared_ptr<NSView> view = std::move(waiting.front());
        waiting.pop_front();
        return view;
    }
    const auto maker = makers_.find(identifier);
    if (maker == makers_.end() || !maker->second)
        return nullptr;
    std::shared_ptr<NSView> view = maker->second();
    if (view)
        view->setIdentifier(identifier);
    return view;
}

void ReuseQueue::put(const std::shared_ptr<NSView> &view) {
    if (view && !view->identifier().isEmpty())
        waiting_[view->identifier()].push_back(view);
}

std::size_t ReuseQueue::waiting() const {
    std::size_t count = 0;
    for (const auto &[identifier, views] : waiting_)
        count += views.size();
    return count;
}

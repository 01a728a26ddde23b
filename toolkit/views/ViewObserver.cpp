#include "toolkit/views/ViewObserver.h"

#include <algorithm>

namespace {
std::vector<std::weak_ptr<ViewObserver>> observers;   // main thread only
}

void ViewObserver::add(const std::shared_ptr<ViewObserver> &observer) {
    remove(observer);
    observers.push_back(observer);
}

void ViewObserver::remove(const std::shared_ptr<ViewObserver> &observer) {
    std::erase_if(observers, [&](const auto &held) { return held.expired() || held.lock() == observer; });
}

bool ViewObserver::any() { return !observers.empty(); }

std::vector<std::shared_ptr<ViewObserver>> ViewObserver::all() {
    std::vector<std::shared_ptr<ViewObserver>> living;
    for (const auto &held : observers)
        if (auto observer = held.lock())
            living.push_back(std::move(observer));
    return living;
}

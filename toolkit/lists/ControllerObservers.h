#pragma once

#include <memory>
#include <utility>
#include <vector>

// Who is told what happens in a list or tree controller; nobody is kept alive. Main thread only.
template <class Observer>
class ControllerObservers {
public:
    // One that was there already is told last from now on.
    void add(const std::shared_ptr<Observer> &observer) {
        remove(observer.get());
        links_.push_back(observer);
    }
    void remove(const Observer *observer) {
        std::erase_if(links_, [observer](const auto &link) { return link.expired() || link.lock().get() == observer; });
    }
    // From a copy: what an observer does may add and remove others.
    template <class Told>
    void tell(const Told &told) {
        for (const auto &observer : living())
            told(*observer);
    }

private:
    [[nodiscard]] std::vector<std::shared_ptr<Observer>> living() {
        std::vector<std::shared_ptr<Observer>> all;
        std::erase_if(links_, [&all](const auto &link) {
            auto observer = link.lock();
            if (!observer)
                return true;
            all.push_back(std::move(observer));
            return false;
        });
        return all;
    }
    std::vector<std::weak_ptr<Observer>> links_;
};

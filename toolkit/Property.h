// Fields that several threads or a nib share.
//
// Property<T>  a field that a nib binds: set on any thread, its observers run on the main thread only; at once when set
//              there, else in one queued block with the latest value. Reads and writes like a plain field.
// Shared<T>    a flag or counter of a flow, read and written on any thread, without observers.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "toolkit/dispatch/Queue.h"

template <class T> class Property {
public:
    using Observer = std::function<void(const T &)>;

    Property() : state_(std::make_shared<State>()) {}
    explicit Property(T value) : Property() { state_->value = std::move(value); }
    Property(const Property &) = delete;
    Property &operator=(const Property &) = delete;

    [[nodiscard]] T get() const {
        const std::scoped_lock lock(state_->mutex);
        return state_->value;
    }
    operator T() const { return get(); }

    void set(T value) {
        {
            const std::scoped_lock lock(state_->mutex);
            state_->value = std::move(value);
            if (state_->observers.empty())
                return;
            if (!dispatch::isMain()) {
                if (!std::exchange(state_->queued, true))
                    dispatch::async(dispatch::main(), [state = state_] { tellObservers(*state); });
                return;
            }
        }
        tellObservers(*state_);
    }
    Property &operator=(T value) {
        set(std::move(value));
        return *this;
    }

    // Told of every change from now on, and once at once. Main thread. Lives as long as the field; an observer that
    // belongs to a shorter-lived object holds it weakly.
    void observe(Observer observer) {
        {
            const std::scoped_lock lock(state_->mutex);
            state_->observers.push_back(std::make_shared<Observer>(observer));
        }
        observer(get());
    }

private:
    struct State {
        mutable std::mutex mutex;
        T value{};
        bool queued = false;
        std::vector<std::shared_ptr<Observer>> observers;
    };
    static void tellObservers(State &state) {
        std::vector<std::shared_ptr<Observer>> observers;
        T value;
        {
            const std::scoped_lock lock(state.mutex);
            state.queued = false;
            observers = state.observers;
            value = state.value;
        }
        for (const auto &observer : observers)
            (*observer)(value);
    }
    std::shared_ptr<State> state_;
};

template <class T> class Shared {
public:
    Shared() = default;
    explicit Shared(T value) : value_(std::move(value)) {}
    [[nodiscard]] T get() const {
        const std::scoped_lock lock(mutex_);
        return value_;
    }
    operator T() const { return get(); }
    void set(T value) {
        const std::scoped_lock lock(mutex_);
        value_ = std::move(value);
    }
    Shared &operator=(T value) {
        set(std::move(value));
        return *this;
    }
    // Changes the value under the lock and gives the new one.
    template <class Change> T update(Change &&change) {
        const std::scoped_lock lock(mutex_);
        std::forward<Change>(change)(value_);
        return value_;
    }

private:
    mutable std::mutex mutex_;
    T value_{};
};

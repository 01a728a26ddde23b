// A piece of work to run once: any callable without arguments, moved, never copied, so that what it owns has one way.
#pragma once

#include <memory>
#include <type_traits>
#include <utility>

namespace dispatch {

class Block {
public:
    Block() = default;
    Block(std::nullptr_t) {}
    template <class Callable>
        requires(!std::is_same_v<std::decay_t<Callable>, Block> && std::is_invocable_v<std::decay_t<Callable> &>)
    Block(Callable &&callable) : body_(std::make_unique<Body<std::decay_t<Callable>>>(std::forward<Callable>(callable))) {}

    explicit operator bool() const { return body_ != nullptr; }
    void operator()() { body_->run(); }

private:
    struct Base {
        virtual ~Base() = default;
        virtual void run() = 0;
    };
    template <class Callable> struct Body final : Base {
        explicit Body(Callable callable) : callable_(std::move(callable)) {}
        void run() override { callable_(); }
        Callable callable_;
    };
    std::unique_ptr<Base> body_;
};

}  // namespace dispatch

// Why something failed. The contracts only count failures; a host that wants to tell the reason asks here.
#pragma once

#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

#include "device/AccessError.h"

namespace device {

struct Failure {
    AccessError::Kind kind = AccessError::Kind::failed;
    std::string text;   // names the file or the record; valid UTF-8
    bool isRemark = false;   // nothing failed; a person had better know all the same
    [[nodiscard]] static Failure of(const std::exception &error);
};

// Threads  any.
class FailureLog {
public:
    // Called for each failure, on the thread that met it.
    using Handler = std::function<void(const Failure &)>;

    void setHandler(Handler handler);
    // An operation begins: what failed before is forgotten.
    void clear();
    void note(Failure failure);
    // The first failure since the operation began: the one that explains the others.
    [[nodiscard]] std::optional<Failure> first() const;

private:
    mutable std::mutex guard_;
    std::optional<Failure> first_;
    Handler handler_;
};

}  // namespace device

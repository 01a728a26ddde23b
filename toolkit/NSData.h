// Bytes that several owners share and nobody changes. An absent one (null) differs from an empty one.
// Threads: any.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class NSData {
public:
    explicit NSData(std::string bytes) : bytes_(std::move(bytes)) {}
    [[nodiscard]] static std::shared_ptr<const NSData> of(std::string_view bytes) {
        return std::make_shared<const NSData>(std::string(bytes));
    }
    [[nodiscard]] std::string_view bytes() const { return bytes_; }
    [[nodiscard]] std::size_t length() const { return bytes_.size(); }

private:
    std::string bytes_;
};

using NSDataRef = std::shared_ptr<const NSData>;

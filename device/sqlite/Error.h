// What SQLite refused: the file, SQLite's own words, and what that means for the caller.
#pragma once

#include <stdexcept>
#include <string>

namespace device::sqlite {

class Error : public std::runtime_error {
public:
    enum class Kind { damaged, locked, full, readOnly, cannotOpen, constraint, tooBig, other };

    // `code` is one of SQLite's (extended) result codes.
    Error(std::string file, int code, const std::string &message);
    ~Error() override;

    [[nodiscard]] const std::string &file() const { return file_; }
    [[nodiscard]] int code() const { return code_; }
    [[nodiscard]] Kind kind() const;

private:
    std::string file_;
    int code_;
};

}  // namespace device::sqlite

// An open device refused one reading or writing. The text names the path and is fit for people.
#pragma once

#include <stdexcept>
#include <string>

namespace device {

class AccessError : public std::runtime_error {
public:
    enum class Kind {
        readOnly,   // a backup, or a folder without write permission
        locked,     // another writer holds the image, or another program the database
        outside,    // a path that leaves its domain's folder
        missing,    // no such file or folder
        damaged,    // a database or property list that is none
        noSpace,
        gone,       // the device went away
        password,   // the password given is another one
        failed,     // anything else that the system refused
    };

    AccessError(Kind kind, const std::string &path, const std::string &reason);
    ~AccessError() override;
    // From errno.
    [[nodiscard]] static AccessError ofSystem(int error, const std::string &path);

    [[nodiscard]] Kind kind() const { return kind_; }

private:
    Kind kind_;
};

}  // namespace device

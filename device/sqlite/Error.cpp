#include "device/sqlite/Error.h"

#include <sqlite3.h>

namespace device::sqlite {

Error::Error(std::string file, int code, const std::string &message)
    : std::runtime_error(file + ": " + message), file_(std::move(file)), code_(code) {}

Error::~Error() = default;

Error::Kind Error::kind() const {
    switch (code_ & 0xFF) {
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_FORMAT: return Kind::damaged;
    case SQLITE_BUSY:
    case SQLITE_LOCKED: return Kind::locked;
    case SQLITE_FULL: return Kind::full;
    case SQLITE_READONLY:
    case SQLITE_PERM: return Kind::readOnly;
    case SQLITE_CANTOPEN: return Kind::cannotOpen;
    case SQLITE_CONSTRAINT: return Kind::constraint;
    case SQLITE_TOOBIG: return Kind::tooBig;
    default: return Kind::other;
    }
}

}  // namespace device::sqlite

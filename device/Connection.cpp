#include "device/Connection.h"

#include <utility>

namespace device {

bool Connection::checkConnection() {
    const bool wasThere = std::exchange(isThere_, tree_->isThere());
    return wasThere && !isThere_;
}

}  // namespace device

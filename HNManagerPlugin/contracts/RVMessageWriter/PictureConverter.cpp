#include "HNManagerPlugin/contracts/RVMessageWriter/PictureConverter.h"

#include <mutex>

namespace {

std::mutex guard;

PictureConverter::Convert &installed() {
    static PictureConverter::Convert convert;
    return convert;
}

}  // namespace

void PictureConverter::install(Convert convert) {
    const std::scoped_lock lock(guard);
    installed() = std::move(convert);
}

bool PictureConverter::convert(const NSString &from, const NSString &to) {
    Convert convert;
    {
        const std::scoped_lock lock(guard);
        convert = installed();
    }
    return convert && convert(from, to);
}

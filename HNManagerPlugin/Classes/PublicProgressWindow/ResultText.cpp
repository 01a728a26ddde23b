#include "HNManagerPlugin/Classes/PublicProgressWindow/ResultText.h"

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVFoundation/NSStringFormats.h"

namespace {

NSString counted(const char *one, const char *several, std::int64_t count) {
    return count < 2 ? localized(one) : NSString::stringWithFormat(localized(several), count);
}

}  // namespace

NSString successText(const ResultKeys &keys, std::int64_t succeeded) {
    return counted(keys.successOne, keys.successSeveral, succeeded);
}

NSString failedText(const ResultKeys &keys, std::int64_t failed) {
    return counted(keys.failedOne, keys.failedSeveral, failed);
}

NSString resultText(const ResultKeys &keys, std::int64_t succeeded, std::int64_t total) {
    const NSString failed = failedText(keys, total - succeeded);
    if (succeeded == 0)
        return failed;
    const NSString success = successText(keys, succeeded);
    return succeeded == total ? success : NSString::stringWithFormat("%@\n%@", success, failed);
}

NSString sizesText(std::int64_t currentBytes, std::int64_t totalBytes) {
    return NSString::stringWithFormat("%@ / %@", byteDecFormatFromInteger(currentBytes), byteDecFormatFromInteger(totalBytes));
}

double percentOf(std::int64_t part, std::int64_t whole) {
    return whole == 0 ? 0 : static_cast<double>(part) / static_cast<double>(whole) * 100;
}

#include "HNManagerPlugin/contracts/RVFoundation/NSStringFormats.h"

NSString byteDecFormatFromInteger(std::int64_t bytes) {
    if (bytes < 1)
        return "0 KB";
    if (bytes < 1000)
        return NSString::stringWithFormat("%lld B", bytes);
    static constexpr const char *kUnits[] = {"KB", "MB", "GB", "TB", "PB", "EB"};
    double amount = static_cast<double>(bytes) / 1000;
    std::size_t unit = 0;
    // 999.95 would be printed as 1000.0 of the smaller unit
    for (; amount >= 999.95 && unit + 1 < std::size(kUnits); ++unit)
        amount /= 1000;
    return NSString::stringWithFormat("%.1f %s", amount, kUnits[unit]);
}

NSString timeFormatFromInteger(std::int64_t seconds) {
    const std::int64_t s = seconds < 0 ? 0 : seconds;
    if (s < 3600)
        return NSString::stringWithFormat("%02ld:%02ld", s / 60, s % 60);
    return NSString::stringWithFormat("%02ld:%02ld:%02ld", s / 3600, s / 60 % 60, s % 60);
}

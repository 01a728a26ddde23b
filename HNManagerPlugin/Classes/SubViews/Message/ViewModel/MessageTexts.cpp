#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/MessageTexts.h"

#include <array>

#include "toolkit/services/NSDateFormatter.h"

namespace messageTexts {

namespace {

void writeDigits(char *at, int count, unsigned value) {
    for (int i = count - 1; i >= 0; --i, value /= 10)
        at[i] = static_cast<char>('0' + value % 10);
}

}   // namespace

NSString filterNSNull(const NSString &text) { return text ? text : NSString(""); }

NSString deleteEnterChar(const NSString &text) {
    return text.isEmpty() ? text : text.stringByTrimmingCharactersInSet(CharacterSet::whitespaceAndNewline);
}

// A formatter that reads its pattern anew takes longer than all else that is done for a message.
NSString stringFromDate(dispatch::Time date) {
    using namespace std::chrono;
    const auto day = floor<days>(date);
    const year_month_day calendar(day);
    const int year = static_cast<int>(calendar.year());
    if (year < 0 || year > 9999)
        return ::stringFromDate(date, "yyyy-MM-dd HH:mm:ss", NSTimeZone::utc);
    const hh_mm_ss time(floor<seconds>(date - day));
    std::array<char, 19> text{'0', '0', '0', '0', '-', '0', '0', '-', '0', '0', ' ', '0', '0', ':', '0', '0', ':', '0', '0'};
    const struct {
        std::size_t at;
        int count;
        unsigned value;
    } parts[] = {{0, 4, static_cast<unsigned>(year)},
                 {5, 2, static_cast<unsigned>(calendar.month())},
                 {8, 2, static_cast<unsigned>(calendar.day())},
                 {11, 2, static_cast<unsigned>(time.hours().count())},
                 {14, 2, static_cast<unsigned>(time.minutes().count())},
                 {17, 2, static_cast<unsigned>(time.seconds().count())}};
    for (const auto &part : parts)
        writeDigits(text.data() + part.at, part.count, part.value);
    return NSString(std::string_view(text.data(), text.size()));
}

double timeIntervalBetween_and(dispatch::Time date, dispatch::Time earlier) {
    return std::chrono::duration<double>(date - earlier).count();
}

bool isString_containString(const NSString &text, std::string_view part) { return text.folded().containsString(part); }

NSString bareNumber(const NSString &number) {
    return number.stringByReplacingOccurrencesOfString_withString("\u00A0", "").stringByReplacingOccurrencesOfString_withString("-", "");
}

}   // namespace messageTexts

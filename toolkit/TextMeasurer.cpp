#include "toolkit/TextMeasurer.h"

#include <algorithm>
#include <cmath>
#include <mutex>

namespace {

// East Asian blocks and emoji; everything else counts as narrow.
bool isWide(char32_t c) {
    struct Block { char32_t first, last; };
    static constexpr Block kWide[] = {{0x1100, 0x115F}, {0x2E80, 0xA4CF}, {0xAC00, 0xD7A3}, {0xF900, 0xFAFF},
                                      {0xFE30, 0xFE6F}, {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}, {0x1F300, 0x1FAFF}, {0x20000, 0x3FFFD}};
    return std::any_of(std::begin(kWide), std::end(kWide), [c](const Block &block) { return c >= block.first && c <= block.last; });
}

// Fills lines with words, as an editor wraps them; blanks at a break hang over the edge.
class LineFiller {
public:
    explicit LineFiller(double limit) : limit_(limit) {}
    void add(char32_t c, double width) {
        if (c == '\n') {
            endWord();
            newLine();
        } else if (unicode::isBlank(c)) {
            endWord();
            gap_ += width;
        } else {
            if (limit_ > 0 && word_ > 0 && word_ + width > limit_) {   // a word wider than the line is cut
                endWord();
                newLine();
            }
            word_ += width;
        }
    }
    void finish() {
        endWord();
        widest_ = std::max(widest_, limit_ > 0 ? std::min(line_ + gap_, limit_) : line_ + gap_);
    }
    [[nodiscard]] double widest() const { return widest_; }
    [[nodiscard]] int lines() const { return lines_; }

private:
    void newLine() {
        widest_ = std::max(widest_, line_);
        line_ = gap_ = 0;
        ++lines_;
    }
    void endWord() {
        if (word_ == 0)
            return;
        if (limit_ > 0 && line_ > 0 && line_ + gap_ + word_ > limit_)
            newLine();
        line_ += gap_ + word_;
        gap_ = word_ = 0;
    }
    double limit_, line_ = 0, gap_ = 0, word_ = 0, widest_ = 0;
    int lines_ = 1;
};

class FixedMetrics final : public TextMeasurer {
public:
    NSSize boundingRect(const NSString &text, const std::shared_ptr<NSFont> &font, double width) const override {
        const double em = font ? font->pointSize() : NSFont::kSystemFontSize;
        LineFiller filler(width);
        const std::string_view bytes = text.view();
        for (std::size_t at = 0; at < bytes.size();) {
            const char32_t c = unicode::next(bytes, at);
            filler.add(c, isWide(c) ? em : em / 2);
        }
        filler.finish();
        return {filler.widest(), filler.lines() * std::ceil(em * 1.25)};
    }
};

std::mutex mutex;
std::shared_ptr<TextMeasurer> &installed() {
    static std::shared_ptr<TextMeasurer> measurer = std::make_shared<FixedMetrics>();
    return measurer;
}

}  // namespace

std::shared_ptr<TextMeasurer> TextMeasurer::current() {
    const std::scoped_lock lock(mutex);
    return installed();
}

void TextMeasurer::install(std::shared_ptr<TextMeasurer> measurer) {
    const std::scoped_lock lock(mutex);
    installed() = measurer ? std::move(measurer) : std::make_shared<FixedMetrics>();
}

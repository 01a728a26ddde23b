#include "device/plist/PropertyList.h"

#include <gtest/gtest.h>

#include "device/AccessError.h"

using device::AccessError;
using device::PropertyList;

namespace {

PropertyList sample() {
    PropertyList list;
    list.setText("name", "Jürgen's <Phone> & co");
    list.setInteger("capacity", 64'000'000'000);
    list.setInteger("negative", -5);
    list.setFlag("flag", true);
    list.setData("salt", std::string_view("\0\xFFx", 3));
    list.setTexts("kinds", {"a", "b"});
    list.setDate("when", 1'700'000'000);
    PropertyList inner;
    inner.setText("key", "value");
    list.setDictionary("inner", inner);
    return list;
}

class BothFormats : public testing::TestWithParam<PropertyList::Format> {};

TEST_P(BothFormats, readBackWhatWasWritten) {
    const PropertyList list = PropertyList::parse(sample().bytes(GetParam()), "x");
    EXPECT_EQ(list.text("name"), "Jürgen's <Phone> & co");
    EXPECT_EQ(list.integer("capacity"), 64'000'000'000);
    EXPECT_EQ(list.integer("negative"), -5);
    EXPECT_EQ(list.flag("flag"), true);
    EXPECT_EQ(list.data("salt"), std::string("\0\xFFx", 3));
    EXPECT_EQ(list.texts("kinds"), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(list.dictionary("inner")->text("key"), "value");
    EXPECT_TRUE(list.has("when"));
    EXPECT_EQ(list.text("capacity"), std::nullopt);   // another type
    EXPECT_EQ(list.integer("missing"), std::nullopt);
}

TEST_P(BothFormats, cutOrSpoiltAnywhereNeverCrash) {
    const std::string whole = sample().bytes(GetParam());
    for (std::size_t at = 0; at < whole.size(); ++at)
        for (const bool isCut : {true, false}) {
            std::string bytes = isCut ? whole.substr(0, at) : whole;
            if (!isCut)
                bytes[at] = static_cast<char>(bytes[at] ^ 0xFF);
            try {
                (void)PropertyList::parse(bytes, "damaged.plist").text("name");
            } catch (const AccessError &error) {
                EXPECT_EQ(error.kind(), AccessError::Kind::damaged);
                EXPECT_TRUE(std::string(error.what()).starts_with("damaged.plist: "));
            }
        }
}

INSTANTIATE_TEST_SUITE_P(PropertyList, BothFormats, testing::Values(PropertyList::Format::xml, PropertyList::Format::binary));

std::string repeated(const char *text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

// `objects` arrays, each of two references to the next one: small, and endless when unfolded.
std::string unfolding(int objects) {
    std::string bytes = "bplist00", offsets;
    for (int i = 0; i < objects; ++i) {
        offsets += static_cast<char>(bytes.size() >> 8), offsets += static_cast<char>(bytes.size());
        if (i + 1 < objects)
            bytes += '\xA2', bytes += static_cast<char>(i + 1), bytes += static_cast<char>(i + 1);
        else
            bytes += '\x08';
    }
    const auto table = bytes.size();
    bytes += offsets + std::string("\0\0\0\0\0\0\2\1", 8) + std::string(7, '\0') + static_cast<char>(objects) + std::string(8, '\0') +
             std::string(6, '\0') + static_cast<char>(table >> 8) + static_cast<char>(table);
    return bytes;
}

TEST(PropertyList, refusesWhatWouldEatTheStackOrTheMemory) {
    const auto isRefused = [](const std::string &bytes) {
        try {
            (void)PropertyList::parse(bytes, "x");
        } catch (const AccessError &) {
            return true;
        }
        return false;
    };
    EXPECT_TRUE(isRefused("<plist>" + repeated("<dict><key>k</key>", 200'000)));
    EXPECT_TRUE(isRefused("<plist>" + repeated("<array>", 200'000)));
    EXPECT_TRUE(isRefused(unfolding(60)));
    EXPECT_TRUE(isRefused("bplist00"));
    EXPECT_TRUE(isRefused("<plist><string>no dictionary</string></plist>"));
    EXPECT_FALSE(isRefused("<plist><dict><key>k</key><array><array/><dict/></array></dict></plist>"));
}

}  // namespace

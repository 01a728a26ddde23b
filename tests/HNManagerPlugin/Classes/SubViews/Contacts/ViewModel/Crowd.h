// Contacts at random of few different texts, so that much agrees: absent and empty ones, and two cases of each.
#pragma once

#include <random>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"

class Crowd {
public:
    explicit Crowd(unsigned seed) : random_(seed) {}

    ContactList contacts(std::size_t count) {
        ContactList made;
        kinds_ = 1 + below(4);
        while (made.size() < count)
            made.push_back(contact());
        return made;
    }

private:
    int below(int n) { return std::uniform_int_distribution(0, n - 1)(random_); }
    NSString pick(std::initializer_list<const char *> texts) {
        return texts.begin()[below(static_cast<int>(texts.size()))];
    }
    NSString rare() { return below(kinds_ + 2) > 1 ? NSString() : pick({nullptr, "", "x", "X", "y"}); }

    std::shared_ptr<ZpContactDataInfo> contact() {
        auto made = make<ZpContactDataInfo>();
        if (below(20) == 0)
            return made;
        made->setCompleteName(pick({nullptr, "", "Ann", "ANN", "Bob", "Cid", "dan", "Eve", "\u00C4", "\u00E4"}));
        if (below(4) == 0)
            made->setFirst_name_yomi(pick({"", "a", "A", nullptr}));
        made->setCompany_name(rare());
        made->setNotes(rare());
        made->setBirthday(rare());
        for (int n = below(4) - 1; n > 0; --n)
            made->mutable_phone_numbers().push_back(
                {pick({"home", "cell"}), pick({nullptr, "", "1", "2", "3", "4", "5", "-6", "6\u00A0"})});
        for (int n = below(4) - 1; n > 0; --n)
            made->mutable_emails().push_back(
                {pick({"home", nullptr}), pick({nullptr, "", "a@b", "A@b", "-a@b", "c@d", "e@f"})});
        for (int n = below(8) - 5; n > 0; --n)
            made->mutable_urls().push_back({pick({"", "x"}), pick({nullptr, "u", "U", "v"})});
        for (int n = below(12) - 9; n > 0; --n)
            made->mutable_ims().push_back({NSString(), pick({"s", "t"}), pick({nullptr, "u", "U", "v"})});
        for (int n = below(12) - 9; n > 0; --n)
            made->mutable_addresses().push_back(
                {NSString(), pick({nullptr, "a", "A"}), {}, {}, {}, pick({nullptr, "DE"}), {}});
        return made;
    }
    std::mt19937 random_;
    int kinds_ = 1;
};

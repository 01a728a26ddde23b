#include "tests/HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/PlainVCardReader.h"

namespace {

using Texts = std::vector<NSString>;

Texts split(const NSString &text, const char *by) { return text.componentsSeparatedByString(by); }
NSString last(const NSString &text, const char *by) { return split(text, by).back(); }
NSString replaced(const NSString &text, const char *what, const char *by) {
    return text.stringByReplacingOccurrencesOfString_withString(what, by);
}
NSString cleaned(const NSString &text) { return replaced(replaced(text, "\n", ""), "\r", ""); }

class PlainReader {
public:
    explicit PlainReader(const NSString &text) : lines_(split(text, "\n")) {
        for (std::size_t i = split(text, "END:VCARD").size() - 1; i > 0; --i)
            contacts_.push_back(make<ZpContactDataInfo>());
    }

    ContactList read() {
        for (at_ = 0; at_ < lines_.size(); ++at_) {
            try {
                line(lines_[at_].stringByTrimmingCharactersInSet(CharacterSet::blanks));
            } catch (const std::out_of_range &) {
                throw PlainFailure(static_cast<std::int64_t>(at_) + 1);
            }
        }
        return contacts_;
    }

private:
    ZpContactDataInfo &contact() { return *contacts_.at(static_cast<std::size_t>(current_)); }
    void unknown() {
        if (!seen_)
            throw std::out_of_range("removals");
    }

    void line(const NSString &l) {
        if (l.hasPrefix("BEGIN:VCARD")) {
            ++current_;
            seen_ = true;
        } else if (l.hasPrefix("N:")) {
            const Texts p = split(split(l, ":").at(1), ";");
            if (p.size() != 5)
                return unknown();
            contact().setLast_name(cleaned(p[0]));
            contact().setFirst_name(cleaned(p[1]));
            contact().setMiddle_name(cleaned(p[2]));
            contact().setName_title(cleaned(p[3]));
            contact().setName_suffix(cleaned(p[4]));
        } else if (l.hasPrefix("FN:")) {
        } else if (l.hasPrefix("X-PHONETIC-FIRST-NAME")) {
            contact().setFirst_name_yomi(cleaned(last(l, "X-PHONETIC-FIRST-NAME:")));
        } else if (l.hasPrefix("X-PHONETIC-LAST-NAME")) {
            contact().setLast_name_yomi(cleaned(last(l, "X-PHONETIC-LAST-NAME:")));
        } else if (l.hasPrefix("ORG")) {
            const Texts halves = split(l, "ORG:");
            if (halves.size() != 2)
                return unknown();
            contact().setCompany_name(cleaned(split(halves[1], ";")[0]));
            contact().setDepartment(cleaned(split(halves[1], ";").at(1)));
        } else if (l.hasPrefix("X-PHONETIC-ORG")) {
            contact().setCompany_name(cleaned(last(l, "X-PHONETIC-ORG:")));
        } else if (l.hasPrefix("NICKNAME")) {
            contact().setNickname(cleaned(last(l, "NICKNAME:")));
        } else if (l.hasPrefix("BDAY;")) {
            contact().setBirthday(cleaned(last(l, "BDAY;VALUE=date:")));
        } else if (l.hasPrefix("TITLE")) {
            contact().setJob_title(cleaned(last(l, "TITLE:")));
        } else if (l.hasPrefix("NOTE")) {
            NSString note = replaced(cleaned(last(l, "NOTE:")), "\\\\", "&^HJ");
            note = replaced(replaced(note, "\\n", "\n"), "\\r", "\r");
            contact().setNotes(replaced(note, "&^HJ", "\\"));
        } else if (l.hasPrefix("PHOTO")) {
            photo(split(l, "PHOTO;ENCODING=b;TYPE=JPEG:").at(1));
        } else if (l.hasPrefix("EMAIL;")) {
            email(split(split(l, "EMAIL;").at(1), ":"));
        } else if (l.hasPrefix("TEL;")) {
            telephone(split(split(l, "TEL;").at(1), ":"));
        } else if (l.hasPrefix("URL;TYPE=") || l.hasPrefix("URL;type=")) {
            url(split(split(l, "URL;TYPE=").at(1), ":"));
        } else if (l.hasPrefix("IMPP")) {
            instantMessage(split(l, "TYPE="));
        } else if (l.hasPrefix("X-ABRELATEDNAMES;TYPE=") || l.hasPrefix("X-ABRELATEDNAMES;type=")) {
            contact().mutable_relatednames().push_back({"other", cleaned(split(l, ":").at(1))});
        } else if (l.hasPrefix("X-ABDATE;TYPE=") || l.hasPrefix("X-ABDATE;type=")) {
            contact().mutable_dates().push_back({"other", cleaned(split(l, ":").at(1))});
        } else if (l.hasPrefix("item")) {
            item(l);
        } else if (l.hasPrefix("END") || l.hasPrefix("VERSION:")) {
        } else {
            unknown();
        }
    }

    // A group of four characters at a time; good letters alone come here from the random texts.
    void photo(const NSString &text) {
        static constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
        std::string digits, bytes;
        std::size_t padding = 0;
        contact().setImage_length(0);
        contact().setImageCharData(nullptr);
        for (const char c : text.view()) {
            if (c == ' ' || c == '\t' || c == '\r')
                continue;
            const std::size_t value = kLetters.find(c);
            if (c == '=' ? ++padding > 2 : value == std::string_view::npos || padding > 0)
                return;
            if (c != '=')
                digits += static_cast<char>(value);
        }
        if (padding > 0 && ((digits.size() + padding) % 4 != 0 || digits.size() % 4 < 2))
            return;
        unsigned bits = 0, count = 0;
        for (const char digit : digits) {
            bits = bits << 6 | static_cast<unsigned>(digit);
            count += 6;
            if (count >= 8) {
                count -= 8;
                bytes += static_cast<char>(bits >> count & 0xFF);
            }
        }
        contact().setImageCharData(NSData::of(bytes));
        contact().setImage_length(static_cast<std::int64_t>(bytes.size()));
    }

    void email(const Texts &halves) {
        ZpEmailDataInfo email;
        email.email = cleaned(halves.back());
        const Texts parameters = split(halves[0], ";");
        email.type = last(cleaned(parameters[0]), "=");
        if (email.type.isEqualIgnoringCase("INTERNET"))
            email.type = last(cleaned(parameters.at(1)), "=");
        if (email.type == "pref")
            email.type = "home";
        contact().mutable_emails().push_back(email);
    }

    void telephone(const Texts &halves) {
        ZpPhoneNumberDataInfo phone;
        phone.phone_number = halves.back();
        if (halves[0].containsString(";"))
            phone.type = last(cleaned(split(halves[0], ";")[0]), "=");
        else
            phone.type = cleaned(last(halves[0], "="));
        contact().mutable_phone_numbers().push_back(phone);
    }

    void url(const Texts &parts) {
        ZpUrlDataInfo url;
        if (parts.size() >= 3) {
            url.url = cleaned(NSString::stringWithFormat("%@:%@", parts[1], parts[2]));
            url.type = cleaned(parts[0]);
        }
        contact().mutable_urls().push_back(url);
    }

    void instantMessage(const Texts &p) {
        ZpIMDataInfo im;
        if (p.size() >= 4)
            im.user = cleaned(last(p[3], ":"));
        else if (p.size() == 3)
            im.user = cleaned(last(p[2], ":"));
        const NSString service = cleaned(p.at(1));
        im.service = service.length() == 0 ? service : service.substringToIndex(service.length() - 1);
        contact().mutable_ims().push_back(im);
    }

    void item(const NSString &l) {
        const bool hasNext = at_ + 1 < lines_.size();
        const NSString label = hasNext ? last(lines_[at_ + 1], ":") : NSString();
        if (l.containsString(".TEL")) {
            contact().mutable_phone_numbers().push_back({"other", cleaned(last(l, ":"))});
        } else if (l.containsString(".EMAIL")) {
            contact().mutable_emails().push_back({"other", cleaned(last(l, ":"))});
        } else if (l.containsString(".URL")) {
            const bool preferred = l.containsString(";TYPE=pref:") || l.containsString(";type=pref:");
            const NSString url = cleaned(last(l, preferred ? ";TYPE=pref:" : ".URL:"));
            contact();
            if (!hasNext)
                return;
            const bool marked = label.containsString("_$!<");
            if (marked && label.length() < 9)
                throw std::out_of_range("label");
            contact().mutable_urls().push_back({marked ? cleaned(label.substringWithRange({4, label.length() - 9})) : "other", url});
        } else if (l.containsString(".IMPP")) {
            const Texts parts = split(split(l, "TYPE=").at(1), ":");
            contact().mutable_ims().push_back({NSString(), cleaned(parts[0]), cleaned(parts.back())});
        } else if (l.containsString(".ADR")) {
            address(l);
        } else if (l.containsString(".X-ABRELATEDNAMES")) {
            contact();
            if (hasNext)
                contact().mutable_relatednames().push_back({plainLabel(label), last(l, ":")});
        } else if (l.containsString(".X-ABDATE")) {
            contact();
            if (hasNext)
                contact().mutable_dates().push_back({plainLabel(label), replaced(last(l, ":"), "\r", "")});
        } else {
            seen_ = true;
        }
    }

    static NSString plainLabel(const NSString &label) {
        if (!label.containsString("_$!<"))
            return "other";
        return label.length() >= 10 ? cleaned(label.substringWithRange({4, label.length() - 9})) : NSString();
    }

    void address(const NSString &l) {
        const NSString head = split(l, ":")[0];
        ZpContactAddressDataInfo address;
        address.type = "other";
        contact();
        if (head.containsString(";TYPE") || head.containsString(";type"))
            address.type = cleaned(split(head, ";TYPE").at(1));
        const Texts parts = split(last(l, ":"), ";");
        if (parts.size() < 7)
            return;
        address.street = cleaned(parts[2]);
        address.city = cleaned(parts[3]);
        address.state = cleaned(parts[4]);
        address.postal_code = cleaned(parts[5]);
        address.country = cleaned(parts[6]);
        contact().mutable_addresses().push_back(address);
    }

    Texts lines_;
    std::size_t at_ = 0;
    ContactList contacts_;
    std::int64_t current_ = -1;
    bool seen_ = false;
};

}  // namespace

ContactList readPlainly(const NSString &text) { return PlainReader(text).read(); }

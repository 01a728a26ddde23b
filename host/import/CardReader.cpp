#include "host/import/CardReader.h"

#include <algorithm>
#include <deque>
#include <utility>

#include "HNManagerPlugin/contracts/RVFoundation/FatalParseFailure.h"
#include "host/import/Dates.h"
#include "host/import/Labels.h"
#include "host/import/Pictures.h"
#include "toolkit/NSString.h"

namespace host::foreign {

namespace {

// "x-apple" and the like say nothing of the service.
struct Service {
    std::string_view scheme, service;
};
constexpr Service kServices[] = {
    {"AIM", "AIM"},       {"XMPP", "Jabber"}, {"SKYPE", "Skype"}, {"YMSGR", "Yahoo"}, {"MSNIM", "MSN"},
    {"ICQ", "ICQ"},       {"SIP", "SIP"},     {"QQ", "QQ"},       {"GG", "GaduGadu"}, {"GTALK", "GoogleTalk"},
    {"X-APPLE", ""},
};
constexpr Service kOwnServices[] = {   // properties of their own
    {"X-AIM", "AIM"},
    {"X-ICQ", "ICQ"},
    {"X-JABBER", "Jabber"},
    {"X-MSN", "MSN"},
    {"X-YAHOO", "Yahoo"},
    {"X-SKYPE", "Skype"},
    {"X-SKYPE-USERNAME", "Skype"},
    {"X-QQ", "QQ"},
    {"X-GOOGLE-TALK", "GoogleTalk"},
    {"X-GTALK", "GoogleTalk"},
    {"X-GADUGADU", "GaduGadu"},
    {"X-GROUPWISE", "GroupWise"},
    {"X-SIP", "SIP"},
    {"X-TWITTER", "Twitter"},
    {"X-MS-IMADDRESS", "IM"},
    {"X-KADDRESSBOOK-X-IMADDRESS", "IM"},
};

// Relations in properties of their own.
struct Relation {
    std::string_view name, label;
};
constexpr Relation kRelations[] = {
    {"X-SPOUSE", "Spouse"},
    {"X-MS-SPOUSE", "Spouse"},
    {"X-EVOLUTION-SPOUSE", "Spouse"},
    {"X-KADDRESSBOOK-X-SPOUSESNAME", "Spouse"},
    {"X-MANAGER", "Manager"},
    {"X-MS-MANAGER", "Manager"},
    {"X-EVOLUTION-MANAGER", "Manager"},
    {"X-KADDRESSBOOK-X-MANAGERSNAME", "Manager"},
    {"X-ASSISTANT", "Assistant"},
    {"X-MS-ASSISTANT", "Assistant"},
    {"X-EVOLUTION-ASSISTANT", "Assistant"},
    {"X-KADDRESSBOOK-X-ASSISTANTSNAME", "Assistant"},
    {"X-MS-CHILD", "Child"},
    {"X-CHILD", "Child"},
};

// The numbers of one telephone system's own items.
constexpr std::string_view kOwnRelations[] = {"",       "Assistant", "Brother", "Child",   "Partner",  "Father", "Friend", "Manager",
                                              "Mother", "Parent",    "Partner", "Referred by", "Relative", "Sister", "Spouse"};
constexpr std::string_view kOwnDates[] = {"", "Anniversary", "other", "Birthday"};

template <std::size_t N>
std::string ownLabel(const std::string_view (&labels)[N], const std::vector<std::string> &parts) {
    const std::string kind = parts.size() > 2 ? parts[2] : "";
    const std::size_t number = kind.size() == 1 || kind.size() == 2 ? static_cast<std::size_t>(std::atoi(kind.c_str())) : 0;
    if (number > 0 && number < N)
        return std::string(labels[number]);
    return parts.size() > 3 ? parts[3] : "";
}

template <std::size_t N>
std::string serviceOf(const Service (&services)[N], const std::string &name) {
    const auto *found = std::ranges::find(services, std::string_view(name), &Service::scheme);
    return found == std::end(services) ? "" : std::string(found->service);
}

std::string_view withoutScheme(std::string_view text, std::string_view scheme) {
    return upper(text.substr(0, scheme.size())) == scheme ? text.substr(scheme.size()) : text;
}

std::string withoutLineBreaks(std::string text) {
    std::ranges::replace_if(text, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return std::string(trimmed(text));
}

// A text of UTF-8 that somebody cut within a character.
bool isMostlyUtf8(std::string_view bytes) {
    std::size_t good = 0, bad = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t start = at;
        const bool isBad = unicode::next(bytes, at) == 0xFFFD && at - start == 1;
        bad += isBad ? 1 : 0;
        good += at - start > 1 ? 1 : 0;
    }
    return good > 2 * bad;
}

bool isAddress(const CardProperty &p) {
    const std::string kind = upper(p.parameter("VALUE").value_or(""));
    return kind == "URI" || kind == "URL" || kind == "CONTENT-ID" || kind == "CID";
}

}  // namespace

// ---------------------------------------------------------------- the table

struct CardReader::Row {
    std::string_view name;
    Action action;
};

const CardReader::Row CardReader::kRows[] = {
    {"VERSION", &CardReader::version},
    {"N", &CardReader::name},
    {"FN", &CardReader::formattedName},
    {"NICKNAME", &CardReader::nickname},
    {"X-EPOCSECONDNAME", &CardReader::nickname},
    {"X-PHONETIC-FIRST-NAME", &CardReader::firstNameYomi},
    {"X-PHONETIC-MIDDLE-NAME", &CardReader::middleNameYomi},
    {"X-PHONETIC-LAST-NAME", &CardReader::lastNameYomi},
    {"ORG", &CardReader::organisation},
    {"X-DEPARTMENT", &CardReader::department},
    {"X-KADDRESSBOOK-X-DEPARTMENT", &CardReader::department},
    {"TITLE", &CardReader::title},
    {"ROLE", &CardReader::role},
    {"BDAY", &CardReader::birthday},
    {"NOTE", &CardReader::noteText},
    {"PHOTO", &CardReader::photo},
    {"TEL", &CardReader::telephone},
    {"EMAIL", &CardReader::email},
    {"URL", &CardReader::url},
    {"X-SOCIALPROFILE", &CardReader::profile},
    {"ADR", &CardReader::address},
    {"LABEL", &CardReader::addressLabel},
    {"IMPP", &CardReader::messenger},
    {"RELATED", &CardReader::related},
    {"X-ABRELATEDNAMES", &CardReader::related},
    {"X-ABDATE", &CardReader::date},
    {"ANNIVERSARY", &CardReader::anniversary},
    {"X-ANNIVERSARY", &CardReader::anniversary},
    {"X-MS-ANNIVERSARY", &CardReader::anniversary},
    {"X-EVOLUTION-ANNIVERSARY", &CardReader::anniversary},
    {"X-KADDRESSBOOK-X-ANNIVERSARY", &CardReader::anniversary},
    {"X-ANDROID-CUSTOM", &CardReader::ownItem},
    {"X-ABLABEL", &CardReader::label},
    {"AGENT", &CardReader::agent},
    // What programs keep for themselves.
    {"PRODID", &CardReader::bookkeeping},
    {"REV", &CardReader::bookkeeping},
    {"UID", &CardReader::bookkeeping},
    {"CLASS", &CardReader::bookkeeping},
    {"MAILER", &CardReader::bookkeeping},
    {"SOURCE", &CardReader::bookkeeping},
    {"PROFILE", &CardReader::bookkeeping},
    {"KIND", &CardReader::bookkeeping},
    {"CLIENTPIDMAP", &CardReader::bookkeeping},
    {"X-ABADR", &CardReader::bookkeeping},
    {"X-ABUID", &CardReader::bookkeeping},
    {"X-ABSHOWAS", &CardReader::bookkeeping},
    {"X-ID", &CardReader::bookkeeping},
    {"X-ETAG", &CardReader::bookkeeping},
    {"X-IMAGETYPE", &CardReader::bookkeeping},
    {"X-IMAGEHASH", &CardReader::bookkeeping},
    {"X-EVOLUTION-FILE-AS", &CardReader::bookkeeping},
    {"X-MS-OL-DESIGN", &CardReader::bookkeeping},
    {"X-MS-OL-DEFAULT-POSTAL-ADDRESS", &CardReader::bookkeeping},
};

CardReader::CardReader(std::string_view bytes, std::string file, Tell tell) : bytes_(bytes), file_(std::move(file)), tell_(std::move(tell)) {
    decode_ = [this](std::string_view piece, const std::optional<std::string> &charset) { return decode(piece, charset); };
    std::optional<std::string> charset = takeMark(bytes_);
    if (!charset)
        charset = wideCharset(bytes_);
    if (!charset || *charset == "UTF-8")
        return;
    whole_ = charsets_.toUtf8(bytes_, *charset).value_or("");
    bytes_ = whole_;
    tell_(0, "read as " + *charset);
}

// ---------------------------------------------------------------- texts

// Asked at the first text that is not UTF-8, over all of them: one name is too little to tell by.
std::string CardReader::fallbackCharset() const {
    if (fallback_)
        return *fallback_;
    std::string sample;
    constexpr std::size_t kMostBytes = std::size_t{1} << 20;
    for (std::size_t at = 0; at < bytes_.size() && sample.size() < kMostBytes;) {
        const std::size_t end = std::min(bytes_.find('\n', at), bytes_.size());
        const std::string_view line = bytes_.substr(at, std::min(end - at, kMostBytes));
        if (!unicode::isValid(line) && upper(line.substr(0, 200)).find("CHARSET=") == std::string::npos)
            sample.append(line).append("\n");
        at = end + 1;
    }
    fallback_ = likelyCharset(sample);
    tell_(0, "texts that are not UTF-8 are read as " + *fallback_);
    return *fallback_;
}

std::string CardReader::decode(std::string_view bytes, const std::optional<std::string> &charset) {
    const std::string declared = charsetName(charset.value_or("UTF-8"));
    const bool isUtf8 = unicode::isValid(bytes);
    // Who copied a file into UTF-8 left the old charsets' names in it.
    if (isUtf8 && (declared == "UTF-8" || isSingleByte(declared)))
        return std::string(bytes);
    std::optional<std::string> text;
    if (declared != "UTF-8")
        text = charsets_.toUtf8(bytes, declared);
    if (!text && (isUtf8 || isMostlyUtf8(bytes)))
        return unicode::sanitized(bytes);
    if (!text)
        text = charsets_.toUtf8(bytes, fallbackCharset());
    return unicode::sanitized(text.value_or(std::string(bytes)));
}

std::string CardReader::text(const CardProperty &p) {
    std::string text = p.text(decode_);
    replaceAll(text, "\r\n", "\n");
    return text;
}

std::vector<std::string> CardReader::parts(const CardProperty &p, char separator) {
    std::vector<std::string> parts = p.parts(separator, decode_);
    for (std::string &part : parts) {
        replaceAll(part, "\r\n", "\n");
        part = std::string(trimmed(part));
    }
    return parts;
}

// ---------------------------------------------------------------- cards

bool CardReader::isBegin(std::string_view line) const { return line.size() < 40 && upper(trimmed(line)) == "BEGIN:VCARD"; }
bool CardReader::isEnd(std::string_view line) const { return line.size() < 40 && upper(trimmed(line)) == "END:VCARD"; }

void CardReader::read(const Visit &visit) {
    lines_ = CardLines(bytes_);
    std::int64_t firstOutside = 0, outside = 0;
    while (lines_.next()) {
        if (isOpen_ && isNested())
            continue;
        if (isBegin(lines_.line())) {
            if (isOpen_) {
                tell_(lines_.number(), "a card begins although the one above has no END:VCARD; that one ends here");
                end(visit);
            }
            begin();
        } else if (!isOpen_) {
            firstOutside = outside++ == 0 ? lines_.number() : firstOutside;
        } else if (isEnd(lines_.line())) {
            end(visit);
        } else {
            readLine();
        }
    }
    if (cards_ == 0)
        throw FatalParseFailure(file_, std::max<std::int64_t>(firstOutside, 1), "no card begins anywhere: there is no BEGIN:VCARD");
    if (isOpen_)
        throw FatalParseFailure(file_, contact_.line, "the card that begins here has no END:VCARD: the file is cut short");
    if (outside > 0)
        tell_(firstOutside, std::to_string(outside) + (outside == 1 ? " line stands" : " lines stand") + " outside the cards, not read");
    tellCounted();
}

void CardReader::begin() {
    isOpen_ = true;
    contact_ = {};
    contact_.line = lines_.number();
    contact_.number = ++cards_;
    formattedName_.clear();
    role_.clear();
    addressLabels_.clear();
    addresses_.clear();
    groups_.clear();
    labels_.clear();
    nicknames_.clear();
    awaitsNested_ = false;
    nested_ = 0;
    lines_.keepBlanks(false);
}

void CardReader::end(const Visit &visit) {
    isOpen_ = false;
    settleNames();
    settlePlaces();
    settleLabels();
    visit(std::move(contact_));
}

void CardReader::readLine() {
    const auto property = CardProperty::parse(lines_.line());
    if (!property) {
        const std::string what = leftBehind("line " + std::to_string(lines_.number()) + ", which is no property,", lines_.line());
        contact_.leave(unicode::sanitized(what));
        return;
    }
    dispatch(*property);
}

void CardReader::dispatch(const CardProperty &p) {
    if (trimmed(p.value).empty() && p.name != "AGENT")
        return;
    noteParameters(p);
    if (const auto *row = std::ranges::find(kRows, std::string_view(p.name), &Row::name); row != std::end(kRows))
        return (this->*row->action)(p);
    if (!serviceOf(kOwnServices, p.name).empty())
        return ownMessenger(p);
    if (std::ranges::find(kRelations, std::string_view(p.name), &Relation::name) != std::end(kRelations))
        return ownRelated(p);
    leave(unicode::sanitized(p.name.substr(0, 60)), p.isBase64() ? "" : std::string_view(trimmedText(p)));
}

void CardReader::note(const std::string &what) {
    constexpr std::size_t kMostKinds = 60;   // a hostile file has a word of its own in each line
    ++counted_[counted_.size() < kMostKinds || counted_.contains(what) ? what : "others"];
}

void CardReader::noteParameters(const CardProperty &p) {
    static constexpr std::string_view kKnown[] = {"TYPE", "VALUE", "ENCODING", "CHARSET", "PREF", "LABEL", "LANGUAGE", "MEDIATYPE", "X-SERVICE-TYPE", "X-USER"};
    for (const std::string_view name : p.parameterNames())
        if (std::ranges::find(kKnown, name) == std::end(kKnown))
            note("parameter " + unicode::sanitized(name.substr(0, 30)));
}

void CardReader::tellCounted() {
    std::string text;
    for (const auto &[what, count] : counted_)
        text += (text.empty() ? "" : ", ") + what + " (" + std::to_string(count) + ")";
    if (!text.empty())
        tell_(0, "not carried, since only the program that wrote it needs it: " + text);
}

// ---------------------------------------------------------------- what only the whole card tells

void CardReader::settleNames() {
    ForeignContact &c = contact_;
    const std::string name = joined({c.nameTitle, c.firstName, c.middleName, c.lastName, c.nameSuffix}, " ");
    if (name.empty() && formattedName_ != c.company)
        c.firstName = formattedName_;
    else if (!tellsNothingNew(formattedName_, joined({name, c.nickname, c.company, c.department}, " ")))
        leave("FN", formattedName_);
    if (role_.empty())
        return;
    if (c.jobTitle.empty())
        c.jobTitle = role_;
    else if (c.jobTitle != role_)
        leave("ROLE", role_);
}

// A formatted address repeats the address of its kind; alone it is one.
void CardReader::settlePlaces() {
    std::map<std::string, std::deque<std::size_t>> ofLabel;
    for (std::size_t i = 0; i < addresses_.size(); ++i)
        ofLabel[addresses_[i].label].push_back(i);
    for (const LabelledText &label : addressLabels_) {
        std::deque<std::size_t> &same = ofLabel[label.label];
        if (same.empty()) {
            contact_.addresses.push_back({label.label, label.text, "", "", "", ""});
            continue;
        }
        const PostalAddress &a = addresses_[same.front()];
        same.pop_front();
        if (!tellsNothingNew(label.text, joined({a.street, a.city, a.state, a.postalCode, a.country}, " ")))
            leave("LABEL", label.text);
    }
}

void CardReader::settleLabels() {
    for (const auto &[group, text] : labels_) {
        const auto items = groups_.find(group);
        const std::string label = labelOfText(text);
        if (label.empty())
            continue;
        if (items == groups_.end()) {
            leave("X-ABLabel", label);
            continue;
        }
        for (const Item &item : items->second) {
            std::string *const fields[] = {
                item.list == Item::List::phone ? &contact_.phones[item.index].label : nullptr,
                item.list == Item::List::email ? &contact_.emails[item.index].label : nullptr,
                item.list == Item::List::url ? &contact_.urls[item.index].label : nullptr,
                item.list == Item::List::date ? &contact_.dates[item.index].label : nullptr,
                item.list == Item::List::related ? &contact_.relatedNames[item.index].label : nullptr,
                item.list == Item::List::address ? &contact_.addresses[item.index].label : nullptr,
                item.list == Item::List::messenger ? &contact_.messengers[item.index].label : nullptr,
            };
            for (std::string *field : fields)
                if (field) {
                    if (!field->empty() && *field != label)
                        note("TYPE beside a label");
                    *field = label;
                }
        }
    }
}

// ---------------------------------------------------------------- properties

std::vector<std::string> CardReader::typesOf(const CardProperty &p) {
    std::vector<std::string> words = p.types();
    for (std::string &word : words)
        word = decode(word, std::nullopt);
    return words;
}

std::string CardReader::labelOf(const CardProperty &p) {
    std::vector<std::string> unused;
    std::string label = withoutLineBreaks(labelOfTypes(typesOf(p), &unused));
    for (const std::string &word : unused)
        note("TYPE=" + unicode::sanitized(word.substr(0, 30)));
    if (p.parameter("PREF"))
        note("TYPE=PREF");
    const std::string group = upper(p.group);
    return label.empty() && (group == "HOME" || group == "WORK") ? labelOfTypes({group}) : label;
}

void CardReader::addItem(const CardProperty &p, Item::List list, std::size_t index) {
    if (!p.group.empty())
        groups_[upper(p.group)].push_back({list, index});
}

void CardReader::setOnce(std::string &field, std::string value, const CardProperty &p) {
    value = withoutLineBreaks(std::move(value));
    if (field.empty())
        field = std::move(value);
    else if (field != value)
        leave("second " + p.name, value);
}

void CardReader::addLabelled(std::vector<LabelledText> &list, Item::List kind, const CardProperty &p, std::string value) {
    if (value.empty())
        return;
    addItem(p, kind, list.size());
    list.push_back({labelOf(p), std::move(value)});
}

void CardReader::version(const CardProperty &p) { lines_.keepBlanks(trimmed(p.value) == "2.1"); }

void CardReader::name(const CardProperty &p) {
    std::vector<std::string> values = parts(p, ';');
    for (std::string &value : values)
        value = withoutLineBreaks(std::move(value));
    ForeignContact &c = contact_;
    const std::string together = joined(values, " ");
    if (together.empty())
        return;
    if (!joined({c.lastName, c.firstName, c.middleName, c.nameTitle, c.nameSuffix}, "").empty())
        return leave("second N", together);
    std::string *const fields[] = {&c.lastName, &c.firstName, &c.middleName, &c.nameTitle, &c.nameSuffix};
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i < std::size(fields))
            *fields[i] = std::move(values[i]);
        else if (!values[i].empty())
            leave("part " + std::to_string(i + 1) + " of N", values[i]);
    }
}

void CardReader::formattedName(const CardProperty &p) { setOnce(formattedName_, text(p), p); }
void CardReader::role(const CardProperty &p) { setOnce(role_, text(p), p); }

void CardReader::nickname(const CardProperty &p) {
    for (const std::string &one : parts(p, ','))
        if (!one.empty() && nicknames_.insert(one).second)
            contact_.nickname += (contact_.nickname.empty() ? "" : ",") + withoutLineBreaks(one);
}

void CardReader::organisation(const CardProperty &p) {
    std::vector<std::string> values = parts(p, ';');
    const std::string company = withoutLineBreaks(values.front());
    values.erase(values.begin());
    const std::string units = withoutLineBreaks(joined(values, ", "));
    if (contact_.company.empty() && contact_.department.empty()) {
        contact_.company = company;
        contact_.department = units;
    } else if (contact_.company != company || contact_.department != units) {
        leave("second ORG", joined({company, units}, ", "));
    }
}

void CardReader::birthday(const CardProperty &p) {
    const std::string text = trimmedText(p), date = plainDate(text);
    if (date != text && text.find('T') != std::string::npos)
        note("time of day of BDAY");
    setOnce(contact_.birthday, date, p);
}

void CardReader::noteText(const CardProperty &p) {
    const std::string text = trimmedText(p);
    contact_.notes += (contact_.notes.empty() || text.empty() ? "" : "\n") + text;
}

void CardReader::photo(const CardProperty &p) {
    if (!contact_.picture.empty())
        return leave("second PHOTO", "");
    const bool isData = upper(trimmed(p.value).substr(0, 5)) == "DATA:";
    if (!isData && (isAddress(p) || p.value.substr(0, 20).find("://") != std::string_view::npos))
        return leave("PHOTO at an address", trimmedText(p));
    if (auto bytes = p.bytes(); bytes && isPicture(*bytes))
        contact_.picture = std::move(*bytes);
    else
        leave("PHOTO, which is no picture,", p.isBase64() ? "" : std::string_view(trimmedText(p)));
}

void CardReader::telephone(const CardProperty &p) {
    const std::string value = withoutLineBreaks(text(p));
    addLabelled(contact_.phones, Item::List::phone, p, std::string(trimmed(withoutScheme(value, "TEL:"))));
}

void CardReader::email(const CardProperty &p) {
    const std::string value = withoutLineBreaks(text(p));
    addLabelled(contact_.emails, Item::List::email, p, std::string(trimmed(withoutScheme(value, "MAILTO:"))));
}

void CardReader::url(const CardProperty &p) { addLabelled(contact_.urls, Item::List::url, p, withoutLineBreaks(text(p))); }

void CardReader::profile(const CardProperty &p) {
    const std::string value = withoutLineBreaks(text(p));
    const std::size_t colon = value.find(':');
    if (upper(value.substr(0, 4)) == "HTTP" || colon == std::string::npos)
        return url(p);
    const auto user = p.parameter("X-USER");
    addMessenger(p, labelOfTypes(typesOf(p)), user ? decode(*user, std::nullopt) : value.substr(colon + 1));
}

void CardReader::address(const CardProperty &p) {
    std::vector<std::string> values = parts(p, ';');
    values.resize(std::max<std::size_t>(values.size(), 7));
    const auto label = p.parameter("LABEL");
    const std::string formatted = label ? decode(*label, p.parameter("CHARSET")) : "";
    if (joined(values, "").empty())
        values[2] = formatted;
    else if (!tellsNothingNew(formatted, joined(values, " ")))
        leave("LABEL", formatted);
    for (std::size_t i = 7; i < values.size(); ++i)
        if (!values[i].empty())
            leave("part " + std::to_string(i + 1) + " of ADR", values[i]);
    PostalAddress address{labelOf(p), joined({values[0], values[1], values[2]}, ", "), values[3], values[4], values[5], values[6]};
    if (joined({address.street, address.city, address.state, address.postalCode, address.country}, "").empty())
        return;
    addItem(p, Item::List::address, contact_.addresses.size());
    addresses_.push_back(address);
    contact_.addresses.push_back(std::move(address));
}

void CardReader::addressLabel(const CardProperty &p) { addressLabels_.push_back({labelOf(p), trimmedText(p)}); }

void CardReader::addMessenger(const CardProperty &p, std::string service, std::string user) {
    if (user.empty())
        return;
    addItem(p, Item::List::messenger, contact_.messengers.size());
    contact_.messengers.push_back({labelOf(p), service.empty() ? "IM" : std::move(service), std::move(user)});
}

void CardReader::messenger(const CardProperty &p) {
    const std::string value = withoutLineBreaks(text(p));
    const std::size_t colon = value.find(':');
    const std::string scheme = colon == std::string::npos ? "" : value.substr(0, colon);
    std::string service = decode(p.parameter("X-SERVICE-TYPE").value_or(""), std::nullopt);
    if (service.empty()) {
        const auto *known = std::ranges::find(kServices, std::string_view(upper(scheme)), &Service::scheme);
        service = known == std::end(kServices) ? scheme : std::string(known->service);
    }
    addMessenger(p, service, colon == std::string::npos ? value : value.substr(colon + 1));
}

void CardReader::ownMessenger(const CardProperty &p) { addMessenger(p, serviceOf(kOwnServices, p.name), withoutLineBreaks(text(p))); }

void CardReader::addRelated(std::string label, std::string name) {
    if (!name.empty())
        contact_.relatedNames.push_back({std::move(label), std::move(name)});
}

void CardReader::related(const CardProperty &p) {
    const std::string name = withoutLineBreaks(text(p));
    if (upper(name.substr(0, 4)) == "URN:")
        return leave(p.name, name);
    addLabelled(contact_.relatedNames, Item::List::related, p, name);
}

void CardReader::ownRelated(const CardProperty &p) {
    const auto *relation = std::ranges::find(kRelations, std::string_view(p.name), &Relation::name);
    addRelated(std::string(relation->label), withoutLineBreaks(text(p)));
}

void CardReader::addDate(std::string label, std::string date) {
    const auto isSame = [&](const LabelledText &known) { return known.text == date && known.label == label; };
    if (!date.empty() && std::ranges::none_of(contact_.dates, isSame))
        contact_.dates.push_back({std::move(label), std::move(date)});
}

void CardReader::date(const CardProperty &p) {
    addLabelled(contact_.dates, Item::List::date, p, plainDate(withoutLineBreaks(text(p))));
}

void CardReader::anniversary(const CardProperty &p) { addDate("Anniversary", plainDate(withoutLineBreaks(text(p)))); }

// Nicknames, dates and relations in the words of one telephone system.
void CardReader::ownItem(const CardProperty &p) {
    const std::vector<std::string> values = parts(p, ';');
    const std::string &kind = values.front();
    if (values.size() < 2 || values[1].empty())
        return leave(p.name, trimmedText(p));
    if (kind.ends_with("/nickname"))
        return setOnce(contact_.nickname, values[1], p);
    if (kind.ends_with("/contact_event"))
        return addDate(ownLabel(kOwnDates, values), plainDate(values[1]));
    if (kind.ends_with("/relation"))
        return addRelated(ownLabel(kOwnRelations, values), values[1]);
    leave(p.name, trimmedText(p));
}

void CardReader::label(const CardProperty &p) {
    std::string &label = labels_[upper(p.group)];
    const std::string text = withoutLineBreaks(this->text(p));
    if (label.empty())
        label = text;
    else if (label != text)
        leave("second " + p.name, text);
}

// Another person's card within the card: on one line, or on lines of its own up to its end.
void CardReader::agent(const CardProperty &p) {
    leave("AGENT", "");
    awaitsNested_ = trimmed(p.value).empty();
    nested_ = isBegin(p.value) ? 1 : 0;
}

// True for a line of a card within the card.
bool CardReader::isNested() {
    const bool begins = isBegin(lines_.line());
    if (nested_ > 0) {
        nested_ += begins ? 1 : isEnd(lines_.line()) ? -1 : 0;
        return true;
    }
    nested_ = std::exchange(awaitsNested_, false) && begins ? 1 : 0;
    return nested_ > 0;
}

}  // namespace host::foreign

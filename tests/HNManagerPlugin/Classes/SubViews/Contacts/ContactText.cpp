#include "tests/HNManagerPlugin/Classes/SubViews/Contacts/ContactText.h"

namespace {

std::string escaped(const NSString &text) {
    if (text.isNil())
        return "~";
    std::string out;
    for (const char c : text.view()) {
        if (c == '\r' || c == '\n' || c == '\t' || c == '\0')
            out += c == '\r' ? "\\r" : c == '\n' ? "\\n" : c == '\t' ? "\\t" : "\\0";
        else
            out += c;
    }
    return out;
}

class Line {
public:
    void field(const char *name, const NSString &value) {
        if (value)
            add(std::string(name) + "=" + escaped(value));
    }
    void item(const char *name, const NSString &type, const std::string &value) {
        add(std::string(name) + "(" + escaped(type) + ")=" + value);
    }
    void add(const std::string &part) { text += (text.empty() ? "" : "; ") + part; }
    std::string text;
};

}   // namespace

std::string described(const ZpContactDataInfo &c) {
    Line line;
    line.field("pKey", c.pKey());
    line.field("completeName", c.completeName());
    line.field("last_name", c.last_name());
    line.field("first_name", c.first_name());
    line.field("middle_name", c.middle_name());
    line.field("name_title", c.name_title());
    line.field("name_suffix", c.name_suffix());
    line.field("first_name_yomi", c.first_name_yomi());
    line.field("middle_name_yomi", c.middle_name_yomi());
    line.field("last_name_yomi", c.last_name_yomi());
    line.field("nickname", c.nickname());
    line.field("company", c.company_name());
    line.field("department", c.department());
    line.field("job", c.job_title());
    line.field("birthday", c.birthday());
    line.field("notes", c.notes());
    for (const auto &p : c.phone_numbers())
        line.item("tel", p.type, escaped(p.phone_number));
    for (const auto &e : c.emails())
        line.item("email", e.type, escaped(e.email));
    for (const auto &a : c.addresses())
        line.item("adr", a.type,
                  escaped(a.street) + "," + escaped(a.city) + "," + escaped(a.state) + "," + escaped(a.postal_code) +
                      "," + escaped(a.country) + (a.country_code ? "," + escaped(a.country_code) : ""));
    for (const auto &u : c.urls())
        line.item("url", u.type, escaped(u.url));
    for (const auto &d : c.dates())
        line.item("date", d.type, escaped(d.date));
    for (const auto &r : c.relatednames())
        line.item("related", r.type, escaped(r.relatename));
    for (const auto &i : c.ims())
        line.item("im", i.type, escaped(i.service) + "/" + escaped(i.user));
    if (c.imageCharData())
        line.add("image=" + escaped(NSString(c.imageCharData()->bytes())));
    if (c.image_length() != 0)
        line.add("image_length=" + std::to_string(c.image_length()));
    return line.text;
}

std::string described(const ContactList &contacts) {
    std::string text;
    for (const auto &contact : contacts)
        text += described(*contact) + "\n";
    return text;
}

std::shared_ptr<ZpContactDataInfo> person(const char *name, const std::vector<const char *> &phones, const std::vector<const char *> &emails) {
    auto made = make<ZpContactDataInfo>();
    made->setCompleteName(name);
    for (const char *phone : phones)
        made->mutable_phone_numbers().push_back({"", phone});
    for (const char *email : emails)
        made->mutable_emails().push_back({"", email});
    return made;
}

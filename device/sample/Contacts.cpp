#include "device/sample/Contacts.h"

#include "device/contacts/AddressBookWriter.h"
#include "device/picture/Jpeg.h"
#include "device/sample/Sample.h"

namespace device::sample {

namespace {

using namespace device::contacts;

const bool registered = registerKind({"Contacts", makeEmptyContacts, addContacts});

struct Labelled {
    const char *type, *value;
};
struct Address {
    const char *type, *street, *city, *state, *zip, *country, *code;
};
struct Message {
    const char *service, *user;
};
struct Person {
    const char *first = nullptr, *last = nullptr, *company = nullptr;
    std::vector<Labelled> phones = {}, emails = {};
    const char *note = nullptr, *birthday = nullptr, *jobTitle = nullptr, *department = nullptr, *nickname = nullptr;
    const char *prefix = nullptr, *middle = nullptr, *suffix = nullptr, *firstPhonetic = nullptr, *lastPhonetic = nullptr;
    std::vector<Address> addresses = {};
    std::vector<Labelled> urls = {}, dates = {}, related = {};
    std::vector<Message> messages = {};
    const char *group = nullptr;
    bool hasPicture = false;
};

// Some numbers have no-break spaces, as a device writes them when a number is typed in: messages find those by name.
const std::vector<Person> &people() {
    static const std::vector<Person> all = {
        {.first = "Ada", .last = "Lindqvist", .company = "Norrsken Labs",
         .phones = {{"Mobile", "+46 70 174 06 05"}, {"Work", "+46 8 505 100 20"}},
         .emails = {{"Work", "ada.lindqvist@example.com"}, {"Home", "ada@example.org"}},
         .note = "Met at the harbour fair.\nPrefers e-mail.\n\nAsk about the boat.", .birthday = "1985-12-10",
         .jobTitle = "Engineer", .department = "Research",
         .addresses = {{"Home", "Sjögatan 14", "Göteborg", nullptr, "411 06", "Sverige", "se"}},
         .urls = {{"HomePage", "https://example.com/ada"}}, .dates = {{"Anniversary", "2012-06-23"}},
         .related = {{"Spouse", "Nils Lindqvist"}}, .messages = {{"Skype", "ada.lindqvist"}}, .group = "Work", .hasPicture = true},
        {.first = "Jürgen", .last = "Müller-Größe", .company = "Bäckerei Müller",
         .phones = {{"Mobile", "+49 171 5551234"}, {"HomeFAX", "+49 30 5550199"}}, .emails = {{"Home", "juergen.mueller@example.de"}},
         .birthday = "1971-02-28", .addresses = {{"Work", "Straße des 17. Juni 135", "Berlin", "Berlin", "10623", "Deutschland", "de"}},
         .group = "Family"},
        {.first = "小明", .last = "王", .phones = {{"Mobile", "+86 138 0013 8000"}}, .emails = {{"Home", "xiaoming.wang@example.cn"}},
         .firstPhonetic = "Xiaoming", .lastPhonetic = "Wang",
         .addresses = {{"Home", "中关村大街27号", "北京", nullptr, "100080", "中国", "cn"}}, .messages = {{"QQ", "10001"}}, .group = "Friends"},
        {.first = "秀英", .last = "李", .company = "东方贸易有限公司", .phones = {{"Work", "+86 21 6123 4567"}}, .jobTitle = "经理"},
        {.first = "فاطمة", .last = "الزهراني", .phones = {{"Mobile", "+966 55 123 4567"}}, .emails = {{"Home", "fatima@example.sa"}},
         .note = "تعمل في الرياض", .birthday = "1990-07-04", .group = "Friends"},
        {.first = "يوسف", .last = "حداد", .phones = {{"Mobile", "+961 3 123 456"}, {"Home", "+961 1 123 456"}}},
        {.first = "さくら", .last = "田中", .phones = {{"iPhone", "+81 90-1234-5678"}}, .nickname = "サクちゃん", .firstPhonetic = "さくら",
         .lastPhonetic = "たなか", .addresses = {{"Home", "丸の内1-9-1", "千代田区", "東京都", "100-0005", "日本", "jp"}}},
        {.first = "지우", .last = "김", .phones = {{"Mobile", "+82 10-1234-5678"}}, .emails = {{"Home", "jiwoo.kim@example.kr"}}},
        {.first = "Анна", .last = "Иванова", .phones = {{"Mobile", "+7 912 345-67-89"}}, .birthday = "1979-11-30", .middle = "Петровна"},
        {.first = "Zoë", .last = "O'Brien", .phones = {{"Mobile", "+353 87 123 4567"}}, .emails = {{"Home", "zoe.obrien@example.ie"}},
         .dates = {{"first day at school", "1996-09-02"}}, .related = {{"Mother", "Maeve O'Brien"}, {"Sister", "Niamh"}}, .group = "Family"},
        {.first = "María José", .last = "García López", .phones = {{"Mobile", "+34 612 345 678"}},
         .emails = {{"Work", "mj.garcia@example.es"}}, .jobTitle = "Médica", .prefix = "Dra.", .group = "Work"},
        {.first = "Henry", .last = "Walton", .phones = {{"Main", "(617) 555-0134"}, {"Pager", "617-555-0177"}},
         .emails = {{"Other", "hwalton@example.edu"}}, .prefix = "Prof.", .middle = "Q.", .suffix = "Jr.",
         .addresses = {{"Home", "12 Elm Street\nApartment 4", "Cambridge", "MA", "02139", "USA", "us"},
                       {"Work", "1 College Road", "Boston", "MA", "02115", "USA", "us"}}},
        {.first = "(Plumber)", .last = "Otto", .phones = {{"Work", "+49 30 5550123"}}, .note = "rings twice"},
        {.first = "!Emergency", .phones = {{"Main", "112"}}},
        {.company = "Pizzeria Napoli", .phones = {{"Main", "+39 081 555 0101"}}, .urls = {{"HomePage", "https://example.it/napoli"}}},
        {.company = "City Library", .phones = {{"Main", "555-0142"}, {"WorkFAX", "555-0143"}}, .emails = {{"Work", "desk@example.org"}},
         .addresses = {{"Work", "3 Reading Lane", "Springfield", nullptr, "49999", "USA", "us"}}},
        {.phones = {{"Mobile", "+1 555 0188"}}},
        {.emails = {{"Home", "noname@example.net"}}, .note = "an address without a name"},
        {.first = "Tom", .last = "Becker", .phones = {{"Mobile", "+49 160 5550111"}}, .emails = {{"Home", "tom@example.de"}}},
        {.first = "Tom", .last = "Becker", .phones = {{"Mobile", "+49 160 5550111"}, {"Home", "030 5550112"}}},
        {.first = "Tom", .last = "Becker", .emails = {{"Work", "t.becker@example.com"}}},
        {.first = "Lena", .last = "Fischer", .phones = {{"Mobile", "+49-151-555-0160"}}},
        {.first = "Lena", .last = "Fischer-Koch", .phones = {{"Mobile", "+49-151-555-0160"}}, .emails = {{"Home", "lena@example.de"}}},
        {.first = "Chloé", .last = "Dubois", .company = "Atelier Dubois", .phones = {{"Mobile", "06 12 34 56 78"}},
         .urls = {{"Work", "http://example.fr/atelier?page=1&lang=fr"}}, .messages = {{"Jabber", "chloe@example.fr"}, {"ICQ", "123456"}},
         .group = "Friends"},
        {.first = "Sven \"Bo\"", .last = "Ås; Karlsen, Jr", .phones = {{"holiday home", "+47 22 55 01 01"}},
         .note = "quotes \"\", commas, semicolons; and a back\\slash"},
        {.first = "Grandma", .phones = {{"Home", "555-0100"}}, .birthday = "1938-03-01", .nickname = "Gran", .group = "Family"},
    };
    return all;
}

// A plain portrait: a head and shoulders on a coloured ground.
std::string portrait() {
    constexpr int kSize = 240;
    picture::Pixels pixels{kSize, kSize, std::vector<std::uint8_t>(kSize * kSize * 3)};
    for (int y = 0; y < kSize; ++y)
        for (int x = 0; x < kSize; ++x) {
            const int dx = x - kSize / 2, head = y - 95, body = y - 240;
            const bool isHead = dx * dx + head * head < 48 * 48;
            const bool isBody = dx * dx * 4 + body * body * 5 < 190 * 190 * 2;
            const auto put = [&](int r, int g, int b) {
                std::uint8_t *at = &pixels.rgb[static_cast<std::size_t>((y * kSize + x) * 3)];
                at[0] = static_cast<std::uint8_t>(r), at[1] = static_cast<std::uint8_t>(g), at[2] = static_cast<std::uint8_t>(b);
            };
            if (isHead)
                put(236, 200, 170);
            else if (isBody)
                put(60, 90, 140);
            else
                put(120 + y / 4, 180, 200 - y / 4);
        }
    return picture::encodedAsJpeg(pixels).value_or("");
}

std::shared_ptr<ZpContactDataInfo> contactOf(const Person &person) {
    auto contact = make<ZpContactDataInfo>();
    contact->setFirst_name(person.first);
    contact->setLast_name(person.last);
    contact->setMiddle_name(person.middle);
    contact->setName_title(person.prefix);
    contact->setName_suffix(person.suffix);
    contact->setFirst_name_yomi(person.firstPhonetic);
    contact->setLast_name_yomi(person.lastPhonetic);
    contact->setNickname(person.nickname);
    contact->setCompany_name(person.company);
    contact->setDepartment(person.department);
    contact->setJob_title(person.jobTitle);
    contact->setBirthday(person.birthday);
    contact->setNotes(person.note);
    for (const Labelled &phone : person.phones)
        contact->mutable_phone_numbers().push_back({phone.type, phone.value});
    for (const Labelled &email : person.emails)
        contact->mutable_emails().push_back({email.type, email.value});
    for (const Address &address : person.addresses)
        contact->mutable_addresses().push_back({address.type, address.street, address.city, address.state, address.zip, address.country, address.code});
    for (const Labelled &url : person.urls)
        contact->mutable_urls().push_back({url.type, url.value});
    for (const Labelled &date : person.dates)
        contact->mutable_dates().push_back({date.type, date.value});
    for (const Labelled &name : person.related)
        contact->mutable_relatednames().push_back({name.type, name.value});
    for (const Message &message : person.messages)
        contact->mutable_ims().push_back({"Home", message.service, message.user});
    if (person.hasPicture)
        contact->setImageCharData(NSData::of(portrait()));
    return contact;
}

}  // namespace

void makeEmptyContacts(ImageFolder &image) {
    const WriterLock lock = image.lockForWriting();
    image.createDatabase(lock, kAddressBook, kNewAddressBook);
    image.createDatabase(lock, kAddressBookImages, kNewAddressBookImages);
}

void addContacts(ImageFolder &image) {
    const WriterLock lock = image.lockForWriting();
    sqlite::Database database = image.openForWriting(lock, kAddressBook);
    image.attachForWriting(lock, database, kAddressBookImages, kImagesSchema);
    if (database.integer("SELECT count(*) FROM ABPerson") > 0)
        return;
    sqlite::Transaction all(database);
    constexpr std::int64_t kMade = 700'000'000;   // a fixed day in 2023: the same image each time
    AddressBookWriter writer(database, true, kMade);
    std::map<std::string, std::int64_t> groups;
    for (const char *name : {"Family", "Friends", "Work"})
        groups[name] = writer.addGroup(name);
    for (const Person &person : people()) {
        const std::int64_t record = writer.add(*contactOf(person));
        if (person.group)
            writer.addToGroup(record, groups.at(person.group));
    }
    all.commit();
}

}  // namespace device::sample

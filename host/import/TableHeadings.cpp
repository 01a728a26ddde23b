#include "host/import/TableHeadings.h"

#include <algorithm>
#include <optional>

#include "host/import/ForeignContact.h"
#include "host/import/Labels.h"
#include "toolkit/NSString.h"

namespace host::foreign {

namespace {

using Kind = Column::Kind;
using Field = Column::Field;
using Part = Column::Part;
using Role = Column::Role;

// Words, one blank between, in lower case; a number is a word.
std::string plain(std::string_view heading) {
    const NSString folded = NSString(trimmed(heading)).folded();
    std::string out;
    bool isDigit = false;
    for (const char c : folded.view()) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isLetter = (c >= 'a' && c <= 'z') || byte >= 0x80, isNumber = c >= '0' && c <= '9';
        if ((isLetter || isNumber) && !out.empty() && out.back() != ' ' && isNumber != isDigit)
            out += ' ';
        if (isLetter || isNumber)
            out += c;
        else if (c == '\'')
            continue;
        else if (!out.empty() && out.back() != ' ')
            out += ' ';
        isDigit = isNumber;
    }
    while (out.ends_with(' '))
        out.pop_back();
    return out;
}

bool hasWord(const std::string &padded, std::string_view word) {
    const bool isHan = static_cast<unsigned char>(word.front()) >= 0xE3;   // written without blanks
    return padded.find(isHan ? std::string(word) : " " + std::string(word) + " ") != std::string::npos;
}

// ---------------------------------------------------------------- whole headings

struct Text {
    std::string_view heading;
    Field field;
};
constexpr Text kTexts[] = {
    {"given name", Field::first}, {"first name", Field::first}, {"firstname", Field::first}, {"vorname", Field::first},
    {"prénom", Field::first}, {"prenom", Field::first}, {"nombre", Field::first}, {"nombre de pila", Field::first}, {"名", Field::first}, {"名字", Field::first},
    {"additional name", Field::middle}, {"middle name", Field::middle}, {"middle names", Field::middle}, {"weitere vornamen", Field::middle},
    {"zweiter vorname", Field::middle}, {"deuxième prénom", Field::middle}, {"autres prénoms", Field::middle}, {"segundo nombre", Field::middle}, {"中间名", Field::middle},
    {"family name", Field::last}, {"last name", Field::last}, {"lastname", Field::last}, {"surname", Field::last}, {"nachname", Field::last}, {"familienname", Field::last},
    {"nom", Field::last}, {"nom de famille", Field::last}, {"apellidos", Field::last}, {"apellido", Field::last}, {"姓", Field::last}, {"姓氏", Field::last},
    {"name prefix", Field::title}, {"title", Field::title}, {"titel", Field::title}, {"prefix", Field::title}, {"anrede", Field::title}, {"civilité", Field::title}, {"titre", Field::title},
    {"tratamiento", Field::title}, {"título", Field::title}, {"称谓", Field::title}, {"尊称", Field::title}, {"称呼", Field::title}, {"头衔", Field::title},
    {"name suffix", Field::suffix}, {"suffix", Field::suffix}, {"namenszusatz", Field::suffix}, {"suffixe", Field::suffix}, {"sufijo", Field::suffix}, {"后缀", Field::suffix},
    {"given name yomi", Field::firstYomi}, {"phonetic first name", Field::firstYomi}, {"first name phonetic", Field::firstYomi}, {"vorname phonetisch", Field::firstYomi},
    {"additional name yomi", Field::middleYomi}, {"phonetic middle name", Field::middleYomi},
    {"family name yomi", Field::lastYomi}, {"phonetic last name", Field::lastYomi}, {"last name phonetic", Field::lastYomi}, {"nachname phonetisch", Field::lastYomi},
    {"nickname", Field::nickname}, {"nick name", Field::nickname}, {"nick", Field::nickname}, {"spitzname", Field::nickname}, {"surnom", Field::nickname}, {"pseudo", Field::nickname},
    {"sobrenombre", Field::nickname}, {"apodo", Field::nickname}, {"alias", Field::nickname}, {"昵称", Field::nickname}, {"绰号", Field::nickname},
    {"company", Field::company}, {"organization", Field::company}, {"organisation", Field::company}, {"company name", Field::company}, {"organization name", Field::company},
    {"organization 1 name", Field::company}, {"firma", Field::company}, {"société", Field::company}, {"entreprise", Field::company}, {"empresa", Field::company},
    {"compañía", Field::company}, {"organización", Field::company}, {"公司", Field::company}, {"单位", Field::company}, {"组织", Field::company},
    {"department", Field::department}, {"organization 1 department", Field::department}, {"organization department", Field::department}, {"abteilung", Field::department},
    {"service", Field::department}, {"département", Field::department}, {"departamento", Field::department}, {"部门", Field::department},
    {"job title", Field::jobTitle}, {"organization 1 title", Field::jobTitle}, {"organization title", Field::jobTitle}, {"position", Field::jobTitle}, {"jobtitle", Field::jobTitle},
    {"arbeitstitel", Field::jobTitle}, {"fonction", Field::jobTitle}, {"poste", Field::jobTitle}, {"titre professionnel", Field::jobTitle}, {"cargo", Field::jobTitle},
    {"puesto", Field::jobTitle}, {"职务", Field::jobTitle}, {"职位", Field::jobTitle}, {"职称", Field::jobTitle},
    {"birthday", Field::birthday}, {"birth date", Field::birthday}, {"birthdate", Field::birthday}, {"date of birth", Field::birthday}, {"geburtsdatum", Field::birthday},
    {"anniversaire", Field::birthday}, {"date de naissance", Field::birthday}, {"cumpleaños", Field::birthday}, {"fecha de nacimiento", Field::birthday}, {"生日", Field::birthday}, {"出生日期", Field::birthday},
    {"notes", Field::notes}, {"note", Field::notes}, {"comments", Field::notes}, {"notizen", Field::notes}, {"bemerkungen", Field::notes}, {"remarques", Field::notes},
    {"commentaires", Field::notes}, {"notas", Field::notes}, {"comentarios", Field::notes}, {"备注", Field::notes}, {"附注", Field::notes}, {"注释", Field::notes},
};

struct Other {
    std::string_view heading;
    Kind kind;
    const char *label;
};
constexpr Other kOthers[] = {
    {"name", Kind::fullName, ""}, {"display name", Kind::fullName, ""}, {"full name", Kind::fullName, ""}, {"anzeigename", Kind::fullName, ""},
    {"vollständiger name", Kind::fullName, ""}, {"nom à afficher", Kind::fullName, ""}, {"nom complet", Kind::fullName, ""}, {"nombre para mostrar", Kind::fullName, ""},
    {"nombre completo", Kind::fullName, ""}, {"显示名", Kind::fullName, ""}, {"显示名称", Kind::fullName, ""}, {"姓名", Kind::fullName, ""},
    {"birth year", Kind::birthYear, ""}, {"geburtsjahr", Kind::birthYear, ""}, {"année de naissance", Kind::birthYear, ""}, {"año de nacimiento", Kind::birthYear, ""},
    {"birth month", Kind::birthMonth, ""}, {"geburtsmonat", Kind::birthMonth, ""}, {"mois de naissance", Kind::birthMonth, ""}, {"mes de nacimiento", Kind::birthMonth, ""},
    {"birth day", Kind::birthDay, ""}, {"jour de naissance", Kind::birthDay, ""}, {"día de nacimiento", Kind::birthDay, ""},
    {"anniversary", Kind::date, "Anniversary"}, {"jahrestag", Kind::date, "Anniversary"}, {"hochzeitstag", Kind::date, "Anniversary"},
    {"anniversaire de mariage", Kind::date, "Anniversary"}, {"aniversario", Kind::date, "Anniversary"}, {"纪念日", Kind::date, "Anniversary"},
    {"spouse", Kind::related, "Spouse"}, {"partner", Kind::related, "Spouse"}, {"ehegatte partner", Kind::related, "Spouse"}, {"conjoint", Kind::related, "Spouse"},
    {"cónyuge", Kind::related, "Spouse"}, {"配偶", Kind::related, "Spouse"},
    {"children", Kind::related, "Child"}, {"kinder", Kind::related, "Child"}, {"enfants", Kind::related, "Child"}, {"hijos", Kind::related, "Child"}, {"子女", Kind::related, "Child"},
    {"managers name", Kind::related, "Manager"}, {"name des der vorgesetzten", Kind::related, "Manager"}, {"vorgesetzter", Kind::related, "Manager"},
    {"nom du responsable", Kind::related, "Manager"}, {"nombre del director", Kind::related, "Manager"}, {"经理姓名", Kind::related, "Manager"},
    {"assistants name", Kind::related, "Assistant"}, {"name assistent", Kind::related, "Assistant"}, {"nom de lassistant e", Kind::related, "Assistant"},
    {"nombre del ayudante", Kind::related, "Assistant"}, {"助理姓名", Kind::related, "Assistant"}, {"referred by", Kind::related, "Referred by"},
    {"screen name", Kind::messenger, ""}, {"messenger name", Kind::messenger, ""}, {"im address", Kind::messenger, ""}, {"pseudonyme", Kind::messenger, ""},
    {"callback", Kind::phone, "Callback"}, {"telex", Kind::phone, "Telex"}, {"isdn", Kind::phone, "ISDN"},
    {"sensitivity", Kind::bookkeeping, ""}, {"priority", Kind::bookkeeping, ""}, {"private", Kind::bookkeeping, ""}, {"vertraulichkeit", Kind::bookkeeping, ""},
    {"priorität", Kind::bookkeeping, ""}, {"privat", Kind::bookkeeping, ""}, {"file as", Kind::bookkeeping, ""}, {"initials", Kind::bookkeeping, ""},
    {"initialen", Kind::bookkeeping, ""}, {"internet free busy", Kind::bookkeeping, ""}, {"end of row", Kind::bookkeeping, ""}, {"row", Kind::bookkeeping, ""},
    {"start of row", Kind::bookkeeping, ""}, {"mileage", Kind::bookkeeping, ""}, {"directory server", Kind::bookkeeping, ""},
};

// ---------------------------------------------------------------- headings put together from words

// First hit wins: "E-mail 2 Address" is no address, "Country/Region" no state, "省/市" no city.
struct Thing {
    std::string_view word;
    Kind kind;
    Part part;
    const char *label;
};
constexpr Part kNoPart = Part::street;
constexpr Thing kThings[] = {
    {"e mail", Kind::email, kNoPart, ""}, {"email", Kind::email, kNoPart, ""}, {"emails", Kind::email, kNoPart, ""}, {"mail", Kind::email, kNoPart, ""}, {"courriel", Kind::email, kNoPart, ""},
    {"messagerie", Kind::email, kNoPart, ""}, {"correo", Kind::email, kNoPart, ""}, {"电子邮件", Kind::email, kNoPart, ""}, {"邮箱", Kind::email, kNoPart, ""}, {"电邮", Kind::email, kNoPart, ""},
    {"fax", Kind::phone, kNoPart, "Fax"}, {"faxnummer", Kind::phone, kNoPart, "Fax"}, {"télécopie", Kind::phone, kNoPart, "Fax"}, {"télécopieur", Kind::phone, kNoPart, "Fax"}, {"传真", Kind::phone, kNoPart, "Fax"},
    {"mobile", Kind::phone, kNoPart, "Mobile"}, {"mobil", Kind::phone, kNoPart, "Mobile"}, {"mobiltelefon", Kind::phone, kNoPart, "Mobile"}, {"cell", Kind::phone, kNoPart, "Mobile"},
    {"cellphone", Kind::phone, kNoPart, "Mobile"}, {"handy", Kind::phone, kNoPart, "Mobile"}, {"portable", Kind::phone, kNoPart, "Mobile"}, {"móvil", Kind::phone, kNoPart, "Mobile"},
    {"celular", Kind::phone, kNoPart, "Mobile"}, {"手机", Kind::phone, kNoPart, "Mobile"}, {"移动电话", Kind::phone, kNoPart, "Mobile"},
    {"pager", Kind::phone, kNoPart, "Pager"}, {"radiomessagerie", Kind::phone, kNoPart, "Pager"}, {"localizador", Kind::phone, kNoPart, "Pager"}, {"buscapersonas", Kind::phone, kNoPart, "Pager"}, {"寻呼机", Kind::phone, kNoPart, "Pager"},
    {"autotelefon", Kind::phone, kNoPart, "Car"}, {"car phone", Kind::phone, kNoPart, "Car"}, {"车载电话", Kind::phone, kNoPart, "Car"},
    {"phone", Kind::phone, kNoPart, ""}, {"phones", Kind::phone, kNoPart, ""}, {"telephone", Kind::phone, kNoPart, ""}, {"telefon", Kind::phone, kNoPart, ""}, {"telefonnummer", Kind::phone, kNoPart, ""},
    {"tel", Kind::phone, kNoPart, ""}, {"tél", Kind::phone, kNoPart, ""}, {"téléphone", Kind::phone, kNoPart, ""}, {"teléfono", Kind::phone, kNoPart, ""}, {"电话", Kind::phone, kNoPart, ""},
    {"po box", Kind::address, Part::pobox, ""}, {"postfach", Kind::address, Part::pobox, ""}, {"boîte postale", Kind::address, Part::pobox, ""}, {"apartado", Kind::address, Part::pobox, ""}, {"邮政信箱", Kind::address, Part::pobox, ""},
    {"zip", Kind::address, Part::postalCode, ""}, {"zipcode", Kind::address, Part::postalCode, ""}, {"postal code", Kind::address, Part::postalCode, ""}, {"postcode", Kind::address, Part::postalCode, ""},
    {"postleitzahl", Kind::address, Part::postalCode, ""}, {"plz", Kind::address, Part::postalCode, ""}, {"code postal", Kind::address, Part::postalCode, ""}, {"código postal", Kind::address, Part::postalCode, ""},
    {"邮政编码", Kind::address, Part::postalCode, ""}, {"邮编", Kind::address, Part::postalCode, ""},
    {"country", Kind::address, Part::country, ""}, {"land", Kind::address, Part::country, ""}, {"pays", Kind::address, Part::country, ""}, {"país", Kind::address, Part::country, ""}, {"国家", Kind::address, Part::country, ""},
    {"state", Kind::address, Part::state, ""}, {"province", Kind::address, Part::state, ""}, {"region", Kind::address, Part::state, ""}, {"région", Kind::address, Part::state, ""}, {"bundesland", Kind::address, Part::state, ""},
    {"kanton", Kind::address, Part::state, ""}, {"provincia", Kind::address, Part::state, ""}, {"estado", Kind::address, Part::state, ""}, {"省", Kind::address, Part::state, ""}, {"自治区", Kind::address, Part::state, ""},
    {"city", Kind::address, Part::city, ""}, {"town", Kind::address, Part::city, ""}, {"ort", Kind::address, Part::city, ""}, {"stadt", Kind::address, Part::city, ""}, {"ville", Kind::address, Part::city, ""},
    {"ciudad", Kind::address, Part::city, ""}, {"localidad", Kind::address, Part::city, ""}, {"市", Kind::address, Part::city, ""},
    {"street", Kind::address, Part::street, ""}, {"strasse", Kind::address, Part::street, ""}, {"straße", Kind::address, Part::street, ""}, {"rue", Kind::address, Part::street, ""}, {"calle", Kind::address, Part::street, ""}, {"街道", Kind::address, Part::street, ""},
    {"address", Kind::address, Part::formatted, ""}, {"adresse", Kind::address, Part::formatted, ""}, {"anschrift", Kind::address, Part::formatted, ""}, {"dirección", Kind::address, Part::formatted, ""}, {"地址", Kind::address, Part::formatted, ""},
    {"web page", Kind::url, kNoPart, ""}, {"website", Kind::url, kNoPart, ""}, {"webseite", Kind::url, kNoPart, ""}, {"web", Kind::url, kNoPart, ""}, {"url", Kind::url, kNoPart, ""}, {"homepage", Kind::url, kNoPart, ""},
    {"page web", Kind::url, kNoPart, ""}, {"site web", Kind::url, kNoPart, ""}, {"página web", Kind::url, kNoPart, ""}, {"网页", Kind::url, kNoPart, ""}, {"网站", Kind::url, kNoPart, ""}, {"主页", Kind::url, kNoPart, ""},
    {"skype", Kind::messenger, kNoPart, "Skype"}, {"icq", Kind::messenger, kNoPart, "ICQ"}, {"aim", Kind::messenger, kNoPart, "AIM"}, {"jabber", Kind::messenger, kNoPart, "Jabber"}, {"qq", Kind::messenger, kNoPart, "QQ"}, {"msn", Kind::messenger, kNoPart, "MSN"},
};

struct Place {
    std::string_view word;
    const char *label;
};
constexpr Place kPlaces[] = {
    {"company main", "Main"}, {"primary phone", "Main"}, {"main", "Main"}, {"hauptnummer", "Main"}, {"assistant", "Assistant"}, {"assistants", "Assistant"}, {"radio", "Radio"}, {"tty", "TTY"},
    {"home", "Home"}, {"privat", "Home"}, {"private", "Home"}, {"domicile", "Home"}, {"personnel", "Home"}, {"particular", "Home"}, {"casa", "Home"}, {"personal", "Home"}, {"住宅", "Home"}, {"家庭", "Home"}, {"个人", "Home"},
    {"work", "Work"}, {"business", "Work"}, {"dienstlich", "Work"}, {"geschäftlich", "Work"}, {"geschaeftlich", "Work"}, {"bureau", "Work"}, {"professionnel", "Work"}, {"professionnelle", "Work"}, {"travail", "Work"},
    {"trabajo", "Work"}, {"oficina", "Work"}, {"商务", "Work"}, {"工作", "Work"}, {"单位", "Work"}, {"办公", "Work"}, {"公司", "Work"},
    {"other", "other"}, {"weitere", "other"}, {"weiterer", "other"}, {"weiteres", "other"}, {"andere", "other"}, {"autre", "other"}, {"otro", "other"}, {"otra", "other"}, {"其他", "other"}, {"其它", "other"},
};
// What is said about an e-mail address is none.
constexpr std::string_view kAbout[] = {"display name", "type", "typ", "anzeigename", "tipo", "nom complet", "nom à afficher", "nombre para mostrar", "显示名", "显示名称", "类型"};

std::string placeOf(const std::string &padded) {
    const auto *place = std::ranges::find_if(kPlaces, [&](const Place &p) { return hasWord(padded, p.word); });
    return place == std::end(kPlaces) ? "" : place->label;
}

std::string labelOf(std::string_view thing, const std::string &place) {
    if (thing == "Fax")
        return place == "Home" ? "HomeFAX" : place == "Work" ? "WorkFAX" : "Fax";
    return thing.empty() ? place : std::string(thing);
}

void readWords(Column &column, const std::string &words) {
    const std::string padded = " " + words + " ";
    const auto *thing = std::ranges::find_if(kThings, [&](const Thing &t) { return hasWord(padded, t.word); });
    if (thing == std::end(kThings))
        return;
    if (thing->kind == Kind::email && std::ranges::any_of(kAbout, [&](std::string_view w) { return hasWord(padded, w); })) {
        column.kind = Kind::bookkeeping;
        return;
    }
    column.kind = thing->kind;
    column.part = thing->part;
    const std::string place = placeOf(padded);
    if (column.kind == Kind::messenger)
        column.service = thing->label;
    else
        column.label = labelOf(thing->label, place);
    if (column.kind == Kind::address)
        column.group = "address " + place;
}

// ---------------------------------------------------------------- "Phone 1 - Type"

struct Group {
    std::string_view word;
    Kind kind;
};
constexpr Group kGroups[] = {
    {"phone", Kind::phone}, {"e mail", Kind::email}, {"email", Kind::email}, {"address", Kind::address}, {"website", Kind::url},
    {"im", Kind::messenger}, {"relation", Kind::related}, {"event", Kind::date},
};
struct PartName {
    std::string_view name;
    Part part;
};
constexpr PartName kPartNames[] = {
    {"street", Part::street}, {"po box", Part::pobox}, {"extended address", Part::extended}, {"city", Part::city}, {"region", Part::state}, {"state", Part::state},
    {"postal code", Part::postalCode}, {"country", Part::country}, {"formatted", Part::formatted},
};

// False where the heading is not of this form.
bool readNumbered(Column &column) {
    const std::size_t cut = column.heading.find(" - ");
    if (cut == std::string::npos)
        return false;
    const std::string left = plain(std::string_view(column.heading).substr(0, cut)), right = plain(std::string_view(column.heading).substr(cut + 3));
    const std::size_t number = left.find_last_of(' ');
    if (number == std::string::npos || left.find_first_not_of("0123456789", number + 1) != std::string::npos)
        return false;
    const auto *group = std::ranges::find(kGroups, std::string_view(left).substr(0, number), &Group::word);
    if (group == std::end(kGroups))
        return false;
    column.group = left;
    column.kind = group->kind;
    if (right == "type" || right == "label") {
        column.role = Role::type;
    } else if (right == "service") {
        column.role = Role::service;
    } else if (column.kind == Kind::address) {
        const auto *part = std::ranges::find(kPartNames, std::string_view(right), &PartName::name);
        column.kind = part == std::end(kPartNames) ? Kind::unknown : Kind::address;
        column.part = part == std::end(kPartNames) ? kNoPart : part->part;
    }
    return true;
}

bool readWhole(Column &column, const std::string &words) {
    if (const auto *text = std::ranges::find(kTexts, std::string_view(words), &Text::heading); text != std::end(kTexts)) {
        column.kind = Kind::text;
        column.field = text->field;
        return true;
    }
    const auto *other = std::ranges::find(kOthers, std::string_view(words), &Other::heading);
    if (other == std::end(kOthers))
        return false;
    column.kind = other->kind;
    column.label = other->label;
    return true;
}

Column columnOf(std::string_view heading) {
    Column column;
    column.heading = heading;
    const std::string words = plain(heading);
    column.isMonthFirst = words == "birthday" || words == "anniversary" || words.starts_with("event ");
    constexpr std::size_t kMostBytes = 200;   // what is longer is no heading
    if (!words.empty() && words.size() <= kMostBytes && !readWhole(column, words) && !readNumbered(column))
        readWords(column, words);
    return column;
}

bool has(const std::vector<Column> &columns, auto &&test) { return std::ranges::any_of(columns, test); }

// One program's words mean another thing beside other columns.
void settle(std::vector<Column> &columns) {
    // "Geburtstag" is the day alone beside the year's column.
    const bool hasYear = has(columns, [](const Column &c) { return c.kind == Kind::birthYear; });
    const bool hasLast = has(columns, [](const Column &c) { return c.kind == Kind::text && c.field == Field::last; });
    const bool hasJobTitle = has(columns, [](const Column &c) { return c.kind == Kind::text && c.field == Field::jobTitle; });
    std::vector<std::string> withStreet;
    for (const Column &c : columns)
        if (c.kind == Kind::address && c.part == Part::street)
            withStreet.push_back(c.group);
    std::ranges::sort(withStreet);
    for (Column &c : columns) {
        const std::string words = plain(c.heading);
        if (words == "geburtstag") {
            c.kind = hasYear ? Kind::birthDay : Kind::text;
            c.field = Field::birthday;
        } else if (words == "title" && !hasJobTitle && !hasLast) {
            c.field = Field::jobTitle;
        } else if (c.kind == Kind::address && c.part == Part::formatted && !std::ranges::binary_search(withStreet, c.group)) {
            c.part = Part::street;   // "Home Address" is the street where no other column is
        }
    }
}

}  // namespace

std::vector<Column> columnsOf(const std::vector<std::string> &headings) {
    std::vector<Column> columns;
    columns.reserve(headings.size());
    for (const std::string &heading : headings)
        columns.push_back(columnOf(heading));
    settle(columns);
    return columns;
}

std::string meaningOf(const Column &column) {
    static constexpr const char *kFields[] = {"first name", "middle name", "last name", "name prefix", "name suffix", "phonetic first name", "phonetic middle name",
                                              "phonetic last name", "nickname", "company", "department", "job title", "birthday", "notes"};
    static constexpr const char *kParts[] = {"street", "street", "street", "city", "state", "postal code", "country", "where its parts have no text"};
    const std::string label = column.label.empty() ? "" : column.label + " ";
    const char *role = column.role == Role::type ? "label of " : column.role == Role::service ? "service of " : "";
    switch (column.kind) {
    case Kind::unknown:
    case Kind::bookkeeping: return "left behind";
    case Kind::text: return kFields[static_cast<int>(column.field)];
    case Kind::fullName: return "name, where no other column has one";
    case Kind::birthYear:
    case Kind::birthMonth:
    case Kind::birthDay: return "part of the birthday";
    case Kind::phone: return role + label + "phone";
    case Kind::email: return role + label + "e-mail";
    case Kind::url: return role + label + "web address";
    case Kind::date: return role + label + "date";
    case Kind::related: return role + label + "related name";
    case Kind::messenger: return role + label + "messenger";
    case Kind::address: return role + label + "address" + (column.role == Role::type ? "" : std::string(", ") + kParts[static_cast<int>(column.part)]);
    }
    return {};
}

}  // namespace host::foreign

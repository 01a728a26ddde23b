#include "HNManagerPlugin/contracts/RVMessageWriter/MessagePage.h"

#include <algorithm>

#include "HNManagerPlugin/contracts/RVMessageWriter/Sha256.h"
#include "toolkit/NSString.h"

namespace messagePage {

// Blocks of messages are laid out only near the screen: 100,000 of them open and scroll at once.
const std::string_view kStyle = R"(
:root{color-scheme:light dark;--back:#fff;--side:#f5f5f7;--line:#d8d8dc;--text:#1c1c1e;--faint:#6b6b70;--left:#e9e9eb;--right:#0b6fdc;--on:#fff;--bad:#c4271b;--hit:#ffd60a}
@media(prefers-color-scheme:dark){:root{--back:#111113;--side:#1b1b1e;--line:#38383c;--text:#f2f2f4;--faint:#a0a0a6;--left:#2f2f33;--right:#1668c1;--bad:#ff6b5e;--hit:#ffd60a}}
*{box-sizing:border-box}
body{margin:0;background:var(--back);color:var(--text);font:16px/1.4 system-ui,-apple-system,"Segoe UI",Roboto,"Noto Sans",sans-serif;display:grid;grid-template:"h h" auto "n m" 1fr/18rem minmax(0,1fr)}
header{grid-area:h;position:sticky;top:0;z-index:2;display:flex;flex-wrap:wrap;gap:.4rem 1rem;align-items:center;min-height:3.5rem;padding:.5rem 1rem;background:var(--side);border-bottom:1px solid var(--line)}
h1{font-size:1.1rem;margin:0;flex:1 1 auto;overflow-wrap:anywhere}
.find{display:flex;gap:.4rem;align-items:center}
.find[hidden]{display:none}
.find input{font:inherit;width:16rem;max-width:50vw;padding:.25rem .7rem;border:1px solid var(--line);border-radius:1rem;background:var(--back);color:inherit}
.find output{min-width:5rem;font-size:.85rem;color:var(--faint)}
.find button{font:inherit;width:2rem;height:2rem;border:1px solid var(--line);border-radius:1rem;background:var(--back);color:inherit;cursor:pointer}
nav{grid-area:n;position:sticky;top:3.5rem;height:calc(100vh - 3.5rem);overflow:auto;background:var(--side);border-inline-end:1px solid var(--line)}
nav h2{font-size:.85rem;color:var(--faint);margin:.8rem 1rem .4rem}
nav ol{list-style:none;margin:0;padding:0}
nav li{content-visibility:auto;contain-intrinsic-size:auto 3.4rem}
nav li[hidden]{display:none}
nav a{display:block;padding:.5rem 1rem;color:inherit;text-decoration:none;border-bottom:1px solid var(--line);overflow-wrap:anywhere}
nav a:hover,nav a:focus-visible{background:var(--left)}
nav small{display:block;color:var(--faint)}
main{grid-area:m;min-width:0;padding:0 1rem 4rem}
section{max-width:52rem;margin:0 auto;scroll-margin-top:3.5rem}
section>h2{position:sticky;top:3.5rem;z-index:1;margin:0 0 .5rem;padding:.6rem .2rem;font-size:1.05rem;background:var(--back);border-bottom:1px solid var(--line);overflow-wrap:anywhere}
section>h2 small{font-weight:400;color:var(--faint)}
.c{content-visibility:auto;contain-intrinsic-size:auto 2600px;display:flex;flex-direction:column;padding:.1rem .3rem}
.c h3{align-self:center;margin:1rem 0 .5rem;font-size:.8rem;font-weight:600;color:var(--faint)}
.l,.r{max-width:75%;margin:0 0 .35rem;padding:.4rem .8rem;border-radius:1.1rem;overflow-wrap:anywhere;white-space:pre-wrap;scroll-margin:6rem}
.l{align-self:flex-start;background:var(--left);border-bottom-left-radius:.3rem}
.r{align-self:flex-end;background:var(--right);color:var(--on);border-bottom-right-radius:.3rem}
.l a,.r a{color:inherit}
.l time,.r time{display:block;font-size:.7rem;opacity:.75;text-align:end;unicode-bidi:isolate}
.e{background:none;color:inherit;font-size:2.6rem;line-height:1.2;padding:.1rem .3rem}
.m{padding:.3rem}
.m time{padding:0 .5rem}
.m img.p,.m video{display:block;max-width:100%;max-height:22rem;min-height:3rem;border-radius:.9rem;background:var(--line)}
.m audio{display:block;width:20rem;max-width:100%}
.m .n{display:flex;gap:.5rem;align-items:center;padding:.3rem .5rem;font-size:.85rem;white-space:normal}
.m .n img{width:1.6rem;height:1.6rem}
.f{outline:2px solid var(--bad)}
.b{align-self:flex-end;display:flex;gap:.3rem;align-items:center;margin:-.15rem 0 .5rem;font-size:.75rem;color:var(--bad)}
.b img{width:1rem;height:1rem}
.on{box-shadow:0 0 0 3px var(--hit)}
::highlight(hit){background:var(--hit);color:#000}
footer{color:var(--faint);font-size:.8rem;text-align:center;padding-top:2rem}
@media(max-width:45rem){body{grid-template:"h" auto "n" auto "m" 1fr/minmax(0,1fr)}nav{position:static;height:auto;max-height:40vh;border-bottom:1px solid var(--line)}.l,.r{max-width:88%}}
@media print{:root{color-scheme:light;--back:#fff;--side:#fff;--text:#000;--faint:#444;--left:#fff;--right:#fff;--on:#000;--line:#999}body{display:block;font-size:10pt}header,section>h2{position:static}.find,nav,video,audio{display:none}.c{content-visibility:visible;display:block}.l,.r{border:1px solid #999;max-width:70%;width:fit-content;break-inside:avoid}.r{margin-inline-start:auto}.e{border:0}h2,h3{break-after:avoid}.m img.p{max-height:10cm}}
)";

// Each word typed is looked for in all messages; their texts are read once, on the first search.
const std::string_view kScript = R"(
(() => {
'use strict';
const box = document.querySelector('.find'), field = box.querySelector('input'), told = box.querySelector('output');
const [back, forth] = box.querySelectorAll('button');
const entries = [...document.querySelectorAll('nav li')], names = entries.map(e => e.textContent.toLowerCase());
const sections = [...document.querySelectorAll('main section')];
let rows, texts, places, hits = [], at = -1, timer;
box.hidden = false;

const read = () => {
  rows = []; texts = []; places = [];
  sections.forEach((section, place) => {
    for (const row of section.querySelectorAll('.l,.r')) {
      rows.push(row); texts.push(row.textContent.toLowerCase()); places.push(place);
    }
  });
};
const mark = word => {
  if (!window.Highlight || !CSS.highlights) return;
  const marks = new Highlight();
  for (const hit of hits.slice(Math.max(0, at - 100), at + 200)) {
    const walker = document.createTreeWalker(rows[hit], NodeFilter.SHOW_TEXT);
    for (let node; (node = walker.nextNode());) {
      const text = node.data.toLowerCase();
      if (text.length !== node.data.length) continue;
      for (let from = text.indexOf(word); from >= 0; from = text.indexOf(word, from + word.length)) {
        const range = new Range();
        range.setStart(node, from); range.setEnd(node, from + word.length);
        marks.add(range);
      }
    }
  }
  CSS.highlights.set('hit', marks);
};
const go = to => {
  document.querySelector('.on')?.classList.remove('on');
  if (!hits.length) return;
  at = (to + hits.length) % hits.length;
  const row = rows[hits[at]];
  row.classList.add('on');
  row.scrollIntoView({block: 'center'});
  requestAnimationFrame(() => row.scrollIntoView({block: 'center'}));
  told.value = (at + 1).toLocaleString() + ' / ' + hits.length.toLocaleString();
  mark(field.value.trim().toLowerCase());
};
const search = () => {
  const word = field.value.trim().toLowerCase();
  if (!rows) read();
  hits = [];
  const has = new Set();
  if (word) texts.forEach((text, row) => { if (text.includes(word)) { hits.push(row); has.add(places[row]); } });
  entries.forEach((entry, place) => { entry.hidden = word !== '' && !has.has(place) && !names[place].includes(word); });
  if (window.Highlight && CSS.highlights) CSS.highlights.delete('hit');
  at = -1;
  told.value = word && !hits.length ? field.dataset.none : '';
  go(0);
};
field.addEventListener('input', () => { clearTimeout(timer); timer = setTimeout(search, 150); });
field.addEventListener('keydown', event => {
  if (event.key === 'Enter') { event.preventDefault(); hits.length ? go(at + (event.shiftKey ? -1 : 1)) : search(); }
  if (event.key === 'Escape') { field.value = ''; search(); }
});
back.addEventListener('click', () => go(at - 1));
forth.addEventListener('click', () => go(at + 1));
document.addEventListener('keydown', event => {
  if (event.key === '/' && document.activeElement !== field) { event.preventDefault(); field.focus(); }
});
})();
)";

const std::string &policy() {
    // "file:" beside 'self': browsers differ in what is the own origin of a page that was opened from a disk.
    static const std::string text = "default-src 'none'; img-src 'self' file:; media-src 'self' file:; style-src 'sha256-" +
                                    sha256Base64(kStyle) + "'; script-src 'sha256-" + sha256Base64(kScript) +
                                    "'; base-uri 'none'; form-action 'none'";
    return text;
}

// ---------------------------------------------------------------- texts

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

std::string_view entityOf(char character) {
    switch (character) {
    case '&': return "&amp;";
    case '<': return "&lt;";
    case '>': return "&gt;";
    case '"': return "&quot;";
    case '\'': return "&#39;";
    default: return {};
    }
}

bool isForbiddenControl(unsigned char byte) { return (byte < 0x20 && byte != '\t' && byte != '\n') || byte == 0x7F; }

// What HTML forbids among well-formed characters of several bytes: controls U+0080 to U+009F and the non-characters.
std::string withoutForbidden(std::string_view text) {
    std::string kept;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        const char32_t character = unicode::next(text, at);
        const bool isForbidden = (character >= 0x80 && character < 0xA0) || (character >= 0xFDD0 && character <= 0xFDEF) ||
                                 (character & 0xFFFE) == 0xFFFE;
        kept += isForbidden ? kReplacement : text.substr(begin, at - begin);
    }
    return kept;
}

bool mayHoldForbidden(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (byte == 0xC2 && at + 1 < text.size() && static_cast<unsigned char>(text[at + 1]) < 0xA0)
            return true;
        if (byte == 0xEF && at + 1 < text.size() && (static_cast<unsigned char>(text[at + 1]) == 0xB7 || static_cast<unsigned char>(text[at + 1]) == 0xBF))
            return true;
        if (byte >= 0xF0 && at + 3 < text.size() && static_cast<unsigned char>(text[at + 2]) == 0xBF)
            return true;
    }
    return false;
}

void appendWellFormed(std::string &out, std::string_view text) {
    std::size_t from = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::string_view entity = entityOf(text[at]);
        if (entity.empty() && !isForbiddenControl(static_cast<unsigned char>(text[at])))
            continue;
        out.append(text, from, at - from).append(entity.empty() ? kReplacement : entity);
        from = at + 1;
    }
    out.append(text, from);
}

bool endsAddress(char character) {
    return static_cast<unsigned char>(character) <= 0x20 || std::string_view("<>\"'`{}|\\^").find(character) != std::string_view::npos;
}

// The address that begins at `at`; empty for none.
std::string_view addressAt(std::string_view text, std::size_t at) {
    const std::string_view rest = text.substr(at);
    const std::size_t head = rest.starts_with("https://") ? 8 : rest.starts_with("http://") ? 7 : 0;
    if (head == 0)
        return {};
    std::size_t end = head;
    while (end < rest.size() && !endsAddress(rest[end]))
        ++end;
    while (end > head && std::string_view(".,;:!?)").find(rest[end - 1]) != std::string_view::npos)
        --end;   // the sentence's, not the address's
    return end > head ? rest.substr(0, end) : std::string_view();
}

}  // namespace

void appendEscaped(std::string &out, std::string_view text) {
    if (!unicode::isValid(text))
        return appendEscaped(out, unicode::sanitized(text));
    if (mayHoldForbidden(text))
        return appendWellFormed(out, withoutForbidden(text));
    appendWellFormed(out, text);
}

void appendLinked(std::string &out, std::string_view text) {
    std::size_t from = 0;
    for (std::size_t at = text.find("http"); at != std::string_view::npos; at = text.find("http", at + 1)) {
        const std::string_view address = addressAt(text, at);
        if (address.empty())
            continue;
        appendEscaped(out, text.substr(from, at - from));
        out += "<a rel=\"noreferrer noopener\" href=\"";
        appendEscaped(out, address);
        out += "\">";
        appendEscaped(out, address);
        out += "</a>";
        at = from = at + address.size();
        --at;
    }
    appendEscaped(out, text.substr(from));
}

void appendAddress(std::string &out, std::string_view fileName) {
    constexpr std::string_view kHex = "0123456789ABCDEF";
    for (const char character : fileName) {
        const auto byte = static_cast<unsigned char>(character);
        const bool isPlain = (byte >= '0' && byte <= '9') || ((byte | 0x20U) >= 'a' && (byte | 0x20U) <= 'z') ||
                             std::string_view("-._~").find(character) != std::string_view::npos;
        if (isPlain)
            out += character;
        else
            (((out += '%') += kHex[byte >> 4U])) += kHex[byte & 15U];
    }
}

bool isEmojiOnly(std::string_view text) {
    constexpr std::size_t kMostBytes = 40;
    if (text.empty() || text.size() > kMostBytes || static_cast<unsigned char>(text.front()) < 0xE2)
        return false;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t character = unicode::next(text, at);
        const bool isPart = character == 0x200D || character == 0xFE0F || character == ' ';
        if (!isPart && !(character >= 0x1F000 && character <= 0x1FAFF) && !(character >= 0x2600 && character <= 0x27BF))
            return false;
    }
    return true;
}

FileKind kindOf(std::string_view fileName) {
    static constexpr struct {
        std::string_view extension;
        FileKind kind;
    } kKinds[] = {
        {"jpg", FileKind::picture}, {"jpeg", FileKind::picture}, {"png", FileKind::picture}, {"gif", FileKind::picture},
        {"webp", FileKind::picture}, {"bmp", FileKind::picture}, {"avif", FileKind::picture}, {"heic", FileKind::heic},
        {"heif", FileKind::heic},   {"heics", FileKind::heic},   {"m4a", FileKind::sound},    {"mp3", FileKind::sound},
        {"aac", FileKind::sound},   {"wav", FileKind::sound},    {"caf", FileKind::sound},    {"amr", FileKind::sound},
        {"aiff", FileKind::sound},  {"ogg", FileKind::sound},    {"opus", FileKind::sound},   {"mov", FileKind::video},
        {"mp4", FileKind::video},   {"m4v", FileKind::video},    {"3gp", FileKind::video},    {"webm", FileKind::video}};
    const auto dot = fileName.rfind('.');
    if (dot == std::string_view::npos)
        return FileKind::other;
    std::string extension(fileName.substr(dot + 1));
    std::ranges::transform(extension, extension.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; });
    for (const auto &[known, kind] : kKinds)
        if (extension == known)
            return kind;
    return FileKind::other;
}

}  // namespace messagePage

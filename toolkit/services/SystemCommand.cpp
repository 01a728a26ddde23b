#include "toolkit/services/SystemCommand.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include "toolkit/services/WholeFile.h"

namespace {

// ---------------------------------------------------------------- words

struct Word {
    std::string text;
    bool isRedirection = false;   // the unquoted ">"
};
using Words = std::vector<Word>;

// Every character that some shell gives a meaning to, at any place of a word.
constexpr std::string_view kShellCharacters = "|&;<>()$`\\\"'*?[]#~!{}^";

bool meansSomethingToAShell(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20 || byte == 0x7F || kShellCharacters.find(character) != std::string_view::npos;
}

std::optional<Words> split(std::string_view command, std::string &reason) {
    Words words;
    std::optional<Word> word;
    const auto end = [&] {
        if (word)
            words.push_back(*std::exchange(word, {}));
    };
    for (std::size_t at = 0; at < command.size(); ++at) {
        const char character = command[at];
        if (character == '\'') {
            const auto close = command.find('\'', at + 1);
            if (close == std::string_view::npos) {
                reason = "a quote that nothing closes";
                return std::nullopt;
            }
            word = word ? word : Word();
            word->text += command.substr(at + 1, close - at - 1);
            at = close;
        } else if (character == ' ') {
            end();
        } else if (character == '>') {
            end();
            words.push_back({">", true});
        } else if (meansSomethingToAShell(character)) {
            reason = "a character with a meaning to a shell";
            return std::nullopt;
        } else {
            word = word ? word : Word();
            word->text += character;
        }
    }
    end();
    return words;
}

// ---------------------------------------------------------------- the commands

// Sources of failed recodes: each the only copy of its text until somebody recodes it.
class OnlyCopies {
public:
    void note(const std::string &path, bool isOnlyCopy) {
        const std::scoped_lock lock(mutex_);
        isOnlyCopy ? (void)paths_.insert(path) : (void)paths_.erase(path);
    }
    bool take(const std::string &path) {
        const std::scoped_lock lock(mutex_);
        return paths_.erase(path) > 0;
    }

private:
    std::mutex mutex_;
    std::set<std::string> paths_;
};

OnlyCopies &onlyCopies() {
    static OnlyCopies copies;
    return copies;
}

std::string reasonOf(const std::string &path) { return path + ": " + std::strerror(errno); }

// Where the second path is a folder the file goes into it, under its own name.
std::string placeIn(const std::string &from, const std::string &to) {
    struct stat info {};
    if (::stat(to.c_str(), &info) != 0 || !S_ISDIR(info.st_mode))
        return to;
    return NSString(to).stringByAppendingPathComponent(NSString(from).lastPathComponent()).str();
}

std::string copy(const Words &words) { return WholeFile::copy(words[1].text, placeIn(words[1].text, words[2].text)); }

std::string recode(const Words &words) {
    const std::string &from = words[5].text;
    std::string reason = WholeFile::recode(from, words[7].text, "UTF8", "GB18030");
    onlyCopies().note(from, !reason.empty());
    return reason;
}

std::string remove(const Words &words) {
    const std::string &path = words[1].text;
    if (onlyCopies().take(path))
        return path + ": kept, it could not be recoded and is the only copy";
    return ::unlink(path.c_str()) == 0 ? "" : reasonOf(path);
}

std::string move(const Words &words) {
    const std::string &from = words[1].text, to = placeIn(from, words[2].text);
    if (::rename(from.c_str(), to.c_str()) == 0)
        return "";
    if (errno != EXDEV)
        return reasonOf(from);
    if (std::string reason = WholeFile::copy(from, to); !reason.empty())
        return reason;
    return ::unlink(from.c_str()) == 0 ? "" : reasonOf(from);
}

// A form: its words, "" where a path stands.
struct Form {
    std::vector<std::string_view> words;
    std::string (*work)(const Words &);
};

const Form kForms[] = {
    {{"cp", "", ""}, copy},
    {{"iconv", "-f", "UTF8", "-t", "GB18030", "", ">", ""}, recode},
    {{"rm", ""}, remove},
    {{"mv", "", ""}, move},
};

bool fits(const Form &form, const Words &words) {
    if (form.words.size() != words.size())
        return false;
    for (std::size_t at = 0; at < words.size(); ++at) {
        const std::string_view wanted = form.words[at], text = words[at].text;
        const bool isPath = wanted.empty();
        if (words[at].isRedirection != (wanted == ">") || (!isPath && text != wanted) || (isPath && text.starts_with('-')))
            return false;
    }
    return true;
}

const Form *formOf(const Words &words) {
    for (const Form &form : kForms)
        if (fits(form, words))
            return &form;
    return nullptr;
}

// ---------------------------------------------------------------- who hears of failures

std::mutex listenerGuard;

std::shared_ptr<const SystemCommand::Listener> &listener() {
    static std::shared_ptr<const SystemCommand::Listener> installed;
    return installed;
}

std::int32_t tell(SystemCommand::Failure failure) {
    const std::int32_t result = failure.isRefused ? SystemCommand::kRefused : SystemCommand::kFailed;
    std::shared_ptr<const SystemCommand::Listener> hears;
    {
        const std::scoped_lock lock(listenerGuard);
        hears = listener();
    }
    if (hears)
        (*hears)(failure);
    return result;
}

std::vector<std::string> textsOf(const Words &words) {
    std::vector<std::string> texts;
    for (const Word &word : words)
        texts.push_back(word.text);
    return texts;
}

}  // namespace

std::int32_t SystemCommand::run(const NSString &command) {
    std::string reason;
    const std::string_view text = command.view();
    if (text.find('\0') != std::string_view::npos)
        return tell({command, {}, "a NUL byte", true});
    const auto words = split(text, reason);
    if (!words)
        return tell({command, {}, reason, true});
    const Form *form = formOf(*words);
    if (!form)
        return tell({command, textsOf(*words), "no command of this system", true});
    reason = form->work(*words);
    return reason.empty() ? kDone : tell({command, textsOf(*words), reason, false});
}

void SystemCommand::setFailureListener(Listener hears) {
    const std::scoped_lock lock(listenerGuard);
    listener() = hears ? std::make_shared<const Listener>(std::move(hears)) : nullptr;
}

bool SystemCommand::isPlain(const NSString &path) {
    for (const char character : path.view())
        if (character == ' ' || character == '\0' || meansSomethingToAShell(character))
            return false;
    return !path.isEmpty() && !path.hasPrefix("-");
}

bool SystemCommand::isQuotable(const NSString &path) {
    return !path.isEmpty() && path.view().find_first_of(std::string_view("'\0", 2)) == std::string_view::npos;
}

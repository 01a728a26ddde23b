#include "tests/support/AnswerScript.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "HNManagerPlugin/contracts/RVUIKit/RUIBreadcrumbWindowController.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIProgressWindowController.h"
#include "toolkit/dispatch/MainLoop.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/views/NSApplication.h"
#include "toolkit/views/NSMenu.h"
#include "toolkit/views/NSSavePanel.h"
#include "toolkit/views/Presenter.h"
#include "toolkit/views/ViewObserver.h"

using namespace std::chrono_literals;

namespace {

constexpr auto kPatience = 10min;

std::string titleOf(const NSButton &button) { return button.title().str(); }

void visit(NSWindow &window, const std::function<void(NSView &)> &each) {
    if (window.contentView())
        window.contentView()->walk([&](NSView &view) {
            if (!view.isHiddenOrHasHiddenAncestor())
                each(view);
            return true;
        });
}

std::vector<std::string> textsOf(NSWindow &window) {
    std::vector<std::string> texts;
    visit(window, [&](NSView &view) {
        const auto *field = dynamic_cast<NSTextField *>(&view);
        if (!field)
            return;
        const std::string text = field->attributedStringValue()->string().str();
        if (!text.empty())
            texts.push_back(text);
    });
    return texts;
}

std::string describe(const NSButton &button) {
    std::string text = titleOf(button);
    if (button.buttonType() == NSButtonType::switchButton)
        text = "<" + text + ">";
    return button.isEnabled() ? text : "(" + text + ")";
}

std::string describe(NSWindow &window) {
    std::string texts, buttons;
    std::vector<std::pair<double, std::string>> placed;
    for (const std::string &text : textsOf(window))
        texts += "|" + text;
    visit(window, [&](NSView &view) {
        if (const auto *button = dynamic_cast<NSButton *>(&view))
            placed.emplace_back(button->frame().minX(), describe(*button));
    });
    std::ranges::stable_sort(placed, {}, [](const auto &button) { return button.first; });
    for (const auto &[x, title] : placed)
        buttons += (buttons.empty() ? "" : " ") + title;
    return window.title().str() + texts + " [" + buttons + "]";
}

bool isBreadcrumb(const NSWindow &window) {
    return std::dynamic_pointer_cast<RUIBreadcrumbWindowController>(window.windowController()) != nullptr;
}

std::shared_ptr<NSMenuItem> itemWithTitle(const std::shared_ptr<NSMenu> &menu, const NSString &title) {
    for (const auto &item : menu->itemArray()) {
        if (item->title == title)
            return item;
        if (item->hasSubmenu())
            if (auto found = itemWithTitle(item->submenu(), title))
                return found;
    }
    return nullptr;
}

}  // namespace

class AnswerScript::Person : public Presenter, public ViewObserver {
public:
    EventLog *log = nullptr;
    std::deque<Answer> answers;
    std::deque<PanelAnswer> panels;
    std::deque<std::string> menus;
    std::vector<std::string> failures;

    void add(const std::string &word) {
        if (log)
            log->add(word);
    }
    void fail(std::string text) { failures.push_back(std::move(text)); }

    // ------------------------------------------------------------ what opens
    void windowDidOpen(NSWindow &window, bool modal) override {
        waitingSince_ = dispatch::now();
        if (modal)
            add((isBreadcrumb(window) ? "says " : "asks ") + describe(window));
    }
    void modalRunDidEnd(NSWindow &) override { waitingSince_ = dispatch::now(); }
    void panelDidOpen(NSSavePanel &panel) override {
        waitingSince_ = dispatch::now();
        add(dynamic_cast<NSOpenPanel *>(&panel) ? "open panel" : "save panel " + panel.nameFieldStringValue.str());
    }
    std::shared_ptr<NSMenuItem> popUpMenu(const std::shared_ptr<NSMenu> &menu, NSPoint, const std::shared_ptr<NSView> &) override {
        if (menus.empty()) {
            fail("nobody scripted a choice in the menu\n" + menu->toString());
            return nullptr;
        }
        const NSString title = menus.front();
        menus.pop_front();
        const auto item = itemWithTitle(menu, title);
        if (!item && !title.isEmpty())
            fail("the menu has no " + title.str() + "\n" + menu->toString());
        add("menu: " + title.str());
        return item;
    }

    // ------------------------------------------------------------ what changes in a progress window
    void propertyChanged(NSView &view, std::string_view key) override {
        const auto window = view.window();
        const auto controller = window ? std::dynamic_pointer_cast<RUIProgressWindowController>(window->windowController()) : nullptr;
        if (!log || !controller || controller->isClosed())
            return;
        if (&view == controller->mainLabel().get() && key == "stringValue")
            add("main: " + controller->mainLabel()->stringValue().str());
        else if (&view == controller->subLabel().get() && key == "stringValue" && !controller->subLabel()->stringValue().isEmpty())
            add("sub: " + controller->subLabel()->stringValue().str());
        else if (&view == controller->borderButton().get() && (key == "title" || key == "enabled" || key == "hidden"))
            add("button: " + describe(*controller->borderButton()) + " " + std::to_string(view.tag()) + (view.isHidden() ? " hidden" : ""));
        else if (&view == controller->colorButton().get() && key == "hidden" && !view.isHidden())
            add("colour button: " + titleOf(*controller->colorButton()));
    }

    // ------------------------------------------------------------ acting
    bool act() {
        const auto window = windowInFront();
        if (!window)
            return false;
        if (const auto panel = std::dynamic_pointer_cast<NSSavePanel>(window))
            return answerPanel(*panel);
        if (!current_.steps_.empty() && currentWindow_.lock() == window)
            return takeStep();
        if (isBreadcrumb(*window))
            return false;
        std::vector<std::string> texts = textsOf(*window);
        texts.push_back(window->title().str());
        const auto fits = std::ranges::find_if(answers, [&](const Answer &answer) { return std::ranges::count(texts, answer.text_) > 0; });
        if (fits != answers.end() && !fits->steps_.empty()) {
            current_ = std::move(*fits);
            currentWindow_ = window;
            answers.erase(fits);
            return takeStep();
        }
        if (!NSApp()->modalWindow() || dispatch::now() - waitingSince_ < kPatience)
            return false;
        return over();
    }

    // Nothing can happen any more while a modal run stands open.
    bool over() {
        const auto window = NSApp()->modalWindow();
        if (!window || isBreadcrumb(*window))
            return false;
        fail("nobody answered " + describe(*window));
        waitingSince_ = dispatch::now();
        if (const auto panel = std::dynamic_pointer_cast<NSSavePanel>(window))
            panel->cancel();
        else
            NSApp()->stopModal();
        return true;
    }

    void pressInFront(const std::string &title) {
        const auto window = windowInFront();
        std::shared_ptr<NSButton> found;
        if (window)
            visit(*window, [&](NSView &view) {
                if (auto *button = dynamic_cast<NSButton *>(&view); button && titleOf(*button) == title)
                    found = std::static_pointer_cast<NSButton>(button->shared_from_this());
            });
        if (!found || !found->isEnabled())
            return fail("no button \"" + title + "\" to press in " + (window ? describe(*window) : "no window"));
        add("presses " + title);
        found->performClick();
    }

    void typeInFront(const std::string &identifier, const std::string &text) {
        const auto window = windowInFront();
        const auto field = window ? std::dynamic_pointer_cast<NSTextField>(window->contentView()->viewWithIdentifier(identifier)) : nullptr;
        if (!field)
            return fail("no field \"" + identifier + "\" to type in");
        field->typeText(text);
        field->endEditing(TextMovement::returnKey);
    }

    static std::shared_ptr<NSWindow> windowInFront() {
        if (const auto modal = NSApp()->modalWindow())
            return modal;
        const auto shown = NSApp()->orderedWindows();
        return shown.empty() ? nullptr : shown.front();
    }

private:
    bool takeStep() {
        waitingSince_ = dispatch::now();
        const auto step = std::move(current_.steps_.front());
        current_.steps_.pop_front();
        step();
        return true;
    }

    bool answerPanel(NSSavePanel &panel) {
        const bool saves = dynamic_cast<NSOpenPanel *>(&panel) == nullptr;
        if (panels.empty() || panels.front().saves_ != saves) {
            fail(std::string("nobody scripted a choice in the ") + (saves ? "save" : "open") + " panel");
            panel.cancel();
            return true;
        }
        const PanelAnswer answer = std::move(panels.front());
        panels.pop_front();
        if (answer.paths_.empty())
            panel.cancel();
        else if (!panel.choose(answer.paths_, answer.replaces_)) {
            fail("the panel refused: " + panel.refusal().str());
            panel.cancel();
        }
        return true;
    }

    Answer current_;
    std::weak_ptr<NSWindow> currentWindow_;
    dispatch::Time waitingSince_ = dispatch::now();
};

// ---------------------------------------------------------------- the script

AnswerScript::AnswerScript(EventLog *log) : person_(std::make_shared<Person>()) {
    person_->log = log;
    Presenter::install(person_);
    ViewObserver::add(person_);
    dispatch::setSettledHandlers({[person = person_.get()] { return person->act(); }, [person = person_.get()] { return person->over(); }});
}

AnswerScript::~AnswerScript() {
    dispatch::setSettledHandlers({});
    Presenter::install(nullptr);
    ViewObserver::remove(person_);
    for (const Answer &answer : person_->answers)
        ADD_FAILURE() << "nobody asked: " << answer.text_;
    for (std::size_t i = 0; i < person_->panels.size(); ++i)
        ADD_FAILURE() << "a scripted panel never opened";
    for (const std::string &title : person_->menus)
        ADD_FAILURE() << "no menu popped up for: " << title;
    for (const std::string &failure : person_->failures)
        ADD_FAILURE() << failure;
}

AnswerScript::Answer &AnswerScript::at(std::string text) {
    Answer &answer = person_->answers.emplace_back();
    answer.text_ = std::move(text);
    answer.script_ = this;
    return answer;
}

AnswerScript::PanelAnswer &AnswerScript::openPanel() { return person_->panels.emplace_back(); }

AnswerScript::PanelAnswer &AnswerScript::savePanel() {
    PanelAnswer &answer = person_->panels.emplace_back();
    answer.saves_ = true;
    return answer;
}

void AnswerScript::menu(std::string title) { person_->menus.push_back(std::move(title)); }

std::vector<std::string> AnswerScript::takeFailures() {
    for (const Answer &answer : person_->answers)
        person_->failures.push_back("nobody asked: " + answer.text_);
    person_->answers.clear();
    return std::exchange(person_->failures, {});
}

AnswerScript::Answer &AnswerScript::Answer::press(std::string title) {
    return run([person = script_->person_.get(), title = std::move(title)] { person->pressInFront(title); });
}

AnswerScript::Answer &AnswerScript::Answer::type(std::string identifier, std::string text) {
    return run([person = script_->person_.get(), identifier = std::move(identifier), text = std::move(text)] {
        person->typeInFront(identifier, text);
    });
}

AnswerScript::Answer &AnswerScript::Answer::closeByTitleBar() {
    return run([person = script_->person_.get()] {
        person->add("closes the window");
        if (const auto window = Person::windowInFront())
            window->performClose();
    });
}

AnswerScript::Answer &AnswerScript::Answer::escape() {
    return run([] {
        if (const auto window = Person::windowInFront())
            window->sendEvent(NSEvent::key(keycode::escape, "\x1b"));
    });
}

AnswerScript::Answer &AnswerScript::Answer::run(std::function<void()> step) {
    steps_.push_back(std::move(step));
    return *this;
}

void AnswerScript::PanelAnswer::choose(std::vector<NSString> paths, bool replace) {
    paths_ = std::move(paths);
    replaces_ = replace;
}

void AnswerScript::PanelAnswer::cancel() { paths_.clear(); }

// The menu bar of the program's window and its keys. Threads: main.
#pragma once

class QMenu;
class QMenuBar;

namespace host {

class Shell;

class MainMenu {
public:
    // The bar is owned by the window that takes it.
    explicit MainMenu(Shell &shell);
    [[nodiscard]] QMenuBar *bar() const { return bar_; }

private:
    void fillRecent();
    void addCategories(QMenu &menu);
    Shell &shell_;
    QMenuBar *bar_;
    QMenu *recent_;
};

}  // namespace host

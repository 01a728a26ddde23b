// What the program itself has to say: errors with a way out, technical details folded. They do not block: the main queue
// goes on, and the person closes them when they like. Threads: main.
#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace host {

// `what` happened and `advice` what to do; empty details show no fold. Without an owner it stands above the window in front.
void showNotice(QWidget *owner, const QString &what, const QString &advice, const QString &details = {});

// Does it, in the order asked for, once no window of a flow is left: what is shown below one cannot be seen nor closed.
void whenQuiet(std::function<void()> action);
// A flow's window opens: notices that are open go for as long as it or another one stands.
void noteWindowOpens();
// A window has gone, or its modal run has ended.
void noteWindowEnded();

}  // namespace host

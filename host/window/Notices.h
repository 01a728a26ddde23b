// What the program itself has to say: errors with a way out, technical details folded. They do not block: the main queue
// goes on, and the person closes them when they like. Threads: main.
#pragma once

#include <QString>

class QWidget;

namespace host {

// `what` happened and `advice` what to do; empty details show no fold.
void showNotice(QWidget *owner, const QString &what, const QString &advice, const QString &details = {});

}  // namespace host

#include "host/window/Notices.h"

#include <QMessageBox>

namespace host {

void showNotice(QWidget *owner, const QString &what, const QString &advice, const QString &details) {
    auto *box = new QMessageBox(QMessageBox::Warning, QObject::tr("Manager"), what, QMessageBox::Ok, owner);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);   // reasons quote names from other people's files
    box->setInformativeText(advice);
    if (!details.isEmpty())
        box->setDetailedText(details);
    box->open();
}

}  // namespace host

#include "OpenOutside.h"

#include "Notice.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QDesktopServices>

namespace tarqa::housekeeping::gui {

bool open_outside(const QUrl& address, QWidget* p_parent)
{
    if (QDesktopServices::openUrl(address)) {
        return true;
    }
    show_notice(QCoreApplication::translate("tarqa::housekeeping::gui::QHelpWebView", "Open Outside"),
        QCoreApplication::translate(
            "tarqa::housekeeping::gui::QHelpWebView", "No program was found on this computer that opens\n%1")
            .arg(address.toString()),
        p_parent);
    return false;
}

} // namespace tarqa::housekeeping::gui

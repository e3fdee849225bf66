#include "OpenOutside.h"

#include "Notice.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QDesktopServices>

namespace tarqa::housekeeping::gui {

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(tarqa::housekeeping::gui::OpenOutside)
};

} // namespace

bool open_outside(const QUrl& address, QWidget* p_parent)
{
    if (QDesktopServices::openUrl(address)) {
        return true;
    }
    show_notice(Texts::tr("No Program Found"),
        Texts::tr("No program was found on this computer that opens\n%1").arg(address.toDisplayString()),
        p_parent);
    return false;
}

} // namespace tarqa::housekeeping::gui

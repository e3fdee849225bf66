#include <tarqa/housekeeping/gui/HelpLauncher.h>

#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/gui/AbstractMainWindow.h>

#include <pkBaseQt/QPKAboutBox.h>

#include "LiveMainWindow.h"

#include <QtCore/QPointer>

namespace tarqa::housekeeping::gui {

namespace {

const char* const s_about_page = ":/tarqa/Resources/about.htm";

} // namespace

HelpLauncher::HelpLauncher(QObject* p_parent)
    : QObject(p_parent)
{ }

HelpLauncher::~HelpLauncher() = default;

void HelpLauncher::about()
{
    // It may go with its parent while it is open.
    const QPointer<pkBase::QPKAboutBox> p_box = new pkBase::QPKAboutBox(s_about_page, live_main_window(),
        QString::fromStdString(ErrorProtocol::const_instance().log_filename()));
    p_box->exec();
    delete p_box.data();
}

} // namespace tarqa::housekeeping::gui

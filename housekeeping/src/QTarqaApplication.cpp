#include <tarqa/housekeeping/QTarqaApplication.h>

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/WindowsMessage.h>

#include "Assertion.h"
#include "Platform.h"
#include "PowerEvents.h"

#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/utilities/Exception.h>

#include <QtGui/QIcon>

namespace tarqa::housekeeping {

namespace {

// Deliberately that of the manager: the log names one source for all of the start-up.
const char* const s_source = "housekeeping/src/ApplicationManager";

// The numbers of the operating system's power events.
const unsigned int s_power_broadcast = 0x218;
const unsigned int s_suspend = 4;
const unsigned int s_resume_automatic = 0x12;

QString product_name()
{
    return QString::fromStdString(pkBase::pkProductInfo::const_instance().product_name());
}

/// Decides where QSettings keeps its values. Before the base class is constructed, since Qt then sets the
/// program's file name as the application's name, which cannot be told from one that the host has set.
int& name_application(int& argc)
{
    if (QCoreApplication::organizationName().isEmpty()) {
        QCoreApplication::setOrganizationName(
            QString::fromStdString(pkBase::pkProductInfo::const_instance().organization_name()));
    }
    if (QCoreApplication::applicationName().isEmpty()) {
        QCoreApplication::setApplicationName(product_name());
    }
    return argc;
}

} // namespace

QTarqaApplication::QTarqaApplication(int& argc, char** argv)
    : QApplication(name_application(argc), argv)
{
    setWindowIcon(QIcon(":/tarq/Resources/" + product_name().toLower() + "64x64.png"));
    if (!organizationName().isEmpty()) {
        make_settings_directory(
            settings_file(organizationName(), applicationName())); // whoever stores there first
    }
    m_power_events = std::make_unique<PowerEvents>(*this);
}

QTarqaApplication::~QTarqaApplication() = default;

bool QTarqaApplication::notify(QObject* p_receiver, QEvent* p_event)
{
    try {
        return QApplication::notify(p_receiver, p_event);
    } catch (tarqa::Exception& e) {
        ErrorProtocol::instance().log_exception(e);
    } catch (std::exception& e) {
        ErrorProtocol::instance().log_exception(e);
    }
    return false;
}

bool QTarqaApplication::winEventFilter(MSG* p_message, long*)
{
    if (!HK_ASSERT(p_message, "msg") || p_message->message != s_power_broadcast) {
        return false;
    }
    if (p_message->wParam == s_suspend) {
        ApplicationManager::instance().setSuspended(true);
    } else if (p_message->wParam == s_resume_automatic) {
        ApplicationManager::instance().setSuspended(false);
    }
    return true;
}

} // namespace tarqa::housekeeping

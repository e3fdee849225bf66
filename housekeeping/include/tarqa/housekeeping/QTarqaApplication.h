#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtWidgets/QApplication>

#include <memory>

// The operating system's message type; WindowsMessage.h has it whole.
struct tagMSG;
typedef tagMSG MSG;

namespace tarqa::housekeeping {

class PowerEvents;

/**
 * The application object: keeps exceptions that escape from event handlers from ending the program, and turns
 * the operating system's announcements of suspend and resume into ApplicationManager::setSuspended().
 *
 * Made and owned by the ApplicationManager, in init(). Main thread.
 */
class TQ_HK_EXPORT QTarqaApplication : public QApplication
{
    Q_OBJECT

public:
    /// Gives the windows the product's icon, and the settings their organisation and application name where
    /// the host did not set them before.
    /// @param argc,argv as QApplication wants them: they must outlive the object
    QTarqaApplication(int& argc, char** argv);
    ~QTarqaApplication() override;

    /// Delivers an event. Logs a tarqa::Exception or a std::exception that escapes from its handler; the
    /// loop then goes on. Anything else passes through. @return false after an exception
    bool notify(QObject* p_receiver, QEvent* p_event) override;

    /// Looks at the power events among the operating system's messages. Asserts the message.
    /// @param p_message the operating system's; must not be null
    /// @param p_result not used
    /// @return true if the message was a power event and is dealt with
    virtual bool winEventFilter(MSG* p_message, long* p_result);

private:
    std::unique_ptr<PowerEvents> m_power_events; // the platform's source of the power events
};

} // namespace tarqa::housekeeping

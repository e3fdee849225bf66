#include "PowerEvents.h"

#include <tarqa/housekeeping/QTarqaApplication.h>
#include <tarqa/housekeeping/WindowsMessage.h>

#include <QtCore/QAbstractNativeEventFilter>

namespace tarqa::housekeeping {

/// Hands the messages of the operating system to the application.
class PowerEvents::Listener : public QAbstractNativeEventFilter
{
public:
    explicit Listener(QTarqaApplication& application)
        : m_application(application)
    {
        m_application.installNativeEventFilter(this);
    }
    ~Listener() override { m_application.removeNativeEventFilter(this); }

    bool nativeEventFilter(const QByteArray& type, void* p_message, long* p_result) override
    {
        if (type != "windows_generic_MSG" && type != "windows_dispatcher_MSG") {
            return false;
        }
        return m_application.winEventFilter(static_cast<MSG*>(p_message), p_result);
    }

private:
    QTarqaApplication& m_application;
};

PowerEvents::PowerEvents(QTarqaApplication& application)
    : m_listener(std::make_unique<Listener>(application))
{ }

PowerEvents::~PowerEvents() = default;

} // namespace tarqa::housekeeping

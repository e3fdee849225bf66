#include "SleepAnnouncer.h"

#include "support/MessageBus.h"

#include <QtDBus/QDBusConnectionInterface>
#include <QtDBus/QDBusMessage>

#include <stdexcept>

namespace {

QString fresh_connection_name()
{
    static int s_connections = 0;
    return QString("announcer %1").arg(++s_connections);
}

} // namespace

SleepAnnouncer::SleepAnnouncer(const support::MessageBus& bus, const QString& service)
    : m_name(fresh_connection_name())
    , m_connection(QDBusConnection::connectToBus(bus.address(), m_name))
{
    if (!m_connection.isConnected() || !m_connection.registerService(service)) {
        throw std::runtime_error("not on the bus: " + service.toStdString());
    }
}

SleepAnnouncer::~SleepAnnouncer()
{
    QDBusConnection::disconnectFromBus(m_name);
}

void SleepAnnouncer::announce(const Announcement& announcement)
{
    QDBusMessage signal
        = QDBusMessage::createSignal(announcement.path, announcement.interface, announcement.signal);
    if (announcement.value.isValid()) {
        signal << announcement.value;
    }
    if (!m_connection.send(signal)) {
        throw std::runtime_error("the announcement was not sent");
    }
}

void SleepAnnouncer::wait_for_the_bus()
{
    m_connection.interface()->serviceOwner("org.freedesktop.DBus");
}

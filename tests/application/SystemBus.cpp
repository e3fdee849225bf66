#include "SystemBus.h"

#include "support/PrivateHome.h"

#include <QtCore/QFile>
#include <QtDBus/QDBusConnectionInterface>
#include <QtDBus/QDBusMessage>

#include <stdexcept>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

const int s_patience = 60000; // milliseconds, for a machine that is very busy

/// A bus on which everybody may do everything, without services that it starts itself.
QByteArray configuration(const QString& address)
{
    return "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
           " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
           "<busconfig>\n"
           "  <type>custom</type>\n"
           "  <listen>"
        + address.toUtf8()
        + "</listen>\n"
          "  <auth>EXTERNAL</auth>\n"
          "  <policy context=\"default\">\n"
          "    <allow send_destination=\"*\" eavesdrop=\"true\"/>\n"
          "    <allow eavesdrop=\"true\"/>\n"
          "    <allow own=\"*\"/>\n"
          "  </policy>\n"
          "</busconfig>\n";
}

QString fresh_connection_name()
{
    static int s_connections = 0;
    return QString("announcer %1").arg(++s_connections);
}

} // namespace

SystemBus::SystemBus()
{
    const QString directory = QString::fromStdString(support::PrivateHome::scratch_directory());
    m_address = "unix:path=" + directory + "/bus";
    QFile file(directory + "/bus.conf");
    if (!file.open(QIODevice::WriteOnly) || file.write(configuration(m_address)) < 0) {
        throw std::runtime_error("no configuration for the message bus");
    }
    file.close();

    m_daemon.setProcessChannelMode(QProcess::MergedChannels);
    m_daemon.start("dbus-daemon", {"--nofork", "--print-address", "--config-file=" + file.fileName()});
    // It prints its address when it is ready.
    if (!m_daemon.waitForReadyRead(s_patience) || !m_daemon.readAll().startsWith("unix:")) {
        throw std::runtime_error("dbus-daemon does not start");
    }
    use(m_address.toStdString());
}

SystemBus::~SystemBus()
{
    kill();
}

void SystemBus::kill()
{
    if (m_daemon.state() != QProcess::NotRunning) {
        m_daemon.kill();
        m_daemon.waitForFinished(s_patience);
    }
}

void SystemBus::use(const std::string& address)
{
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", QByteArray::fromStdString(address));
}

SilentBus::SilentBus()
    : m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    const std::string path = support::PrivateHome::scratch_directory() + "/silent";
    m_address = "unix:path=" + path;
    sockaddr_un name = {};
    name.sun_family = AF_UNIX;
    path.copy(name.sun_path, sizeof(name.sun_path) - 1);
    if (::bind(m_socket, reinterpret_cast<const sockaddr*>(&name), sizeof(name)) != 0
        || ::listen(m_socket, 8) != 0) {
        throw std::runtime_error("no socket " + path);
    }
}

SilentBus::~SilentBus()
{
    ::close(m_socket);
}

void SilentBus::refuse()
{
    for (int caller = 0; (caller = ::accept(m_socket, nullptr, nullptr)) >= 0;) {
        ::close(caller);
    }
}

void SilentBus::hang_up()
{
    ::shutdown(m_socket, SHUT_RDWR);
}

SleepAnnouncer::SleepAnnouncer(const SystemBus& bus, const QString& service)
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

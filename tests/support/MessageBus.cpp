#include "support/MessageBus.h"

#include "support/PrivateHome.h"

#include <QtCore/QFile>

#include <stdexcept>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace support {

const char* const system_bus = "DBUS_SYSTEM_BUS_ADDRESS";
const char* const session_bus = "DBUS_SESSION_BUS_ADDRESS";

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

} // namespace

MessageBus::MessageBus(const char* variable, const QString& address)
{
    const QString directory = QString::fromStdString(PrivateHome::scratch_directory());
    m_address = address.isEmpty() ? "unix:path=" + directory + "/bus" : address;
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
    use(variable, m_address.toStdString());
}

MessageBus::~MessageBus()
{
    kill();
}

void MessageBus::kill()
{
    if (m_daemon.state() != QProcess::NotRunning) {
        m_daemon.kill();
        m_daemon.waitForFinished(s_patience);
    }
}

void MessageBus::use(const char* variable, const std::string& address)
{
    qputenv(variable, QByteArray::fromStdString(address));
}

SilentBus::SilentBus()
    : m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    const std::string path = PrivateHome::scratch_directory() + "/silent";
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

} // namespace support

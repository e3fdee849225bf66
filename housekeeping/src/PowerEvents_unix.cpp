#include "PowerEvents.h"

#include <tarqa/housekeeping/ApplicationManager.h>

#include <QtCore/QFile>
#include <QtCore/QObject>
#include <QtDBus/QDBusConnection>
#include <QtNetwork/QLocalSocket>

namespace tarqa::housekeeping {

namespace {

const char* const s_service = "org.freedesktop.login1";
const char* const s_path = "/org/freedesktop/login1";
const char* const s_interface = "org.freedesktop.login1.Manager";
const char* const s_signal = "PrepareForSleep";

const char* const s_address_variable = "DBUS_SYSTEM_BUS_ADDRESS";
const char* const s_default_address = "unix:path=/var/run/dbus/system_bus_socket";
const char* const s_socket = "unix:path=";
const int s_patience = 1000; // milliseconds

/// Whether somebody is at work behind the bus's socket. Qt would wait for ever for one that takes a
/// connection and never answers. Addresses of other kinds are left to Qt.
bool bus_answers()
{
    const QByteArray address = qEnvironmentVariableIsEmpty(s_address_variable) ? QByteArray(s_default_address)
                                                                               : qgetenv(s_address_variable);
    if (!address.startsWith(s_socket)) {
        return true;
    }
    const QByteArray path
        = address.mid(static_cast<int>(qstrlen(s_socket))).split(';').first().split(',').first();
    QLocalSocket socket;
    socket.connectToServer(QFile::decodeName(QByteArray::fromPercentEncoding(path)));
    if (!socket.waitForConnected(s_patience)) {
        return false;
    }
    socket.write(QByteArray("\0AUTH\r\n", 7)); // answered with the ways to introduce oneself
    return socket.waitForReadyRead(s_patience);
}

} // namespace

/// Takes the log-in manager's signal on the system bus.
class PowerEvents::Listener : public QObject
{
    Q_OBJECT

public:
    Listener()
    {
        if (bus_answers()) {
            QDBusConnection::systemBus().connect(
                s_service, s_path, s_interface, s_signal, this, SLOT(prepare_for_sleep(bool)));
        }
    }

private slots:
    /// @param begins true before the machine sleeps, false after it woke up
    void prepare_for_sleep(bool begins) { ApplicationManager::instance().setSuspended(begins); }
};

PowerEvents::PowerEvents(QTarqaApplication&)
    : m_listener(std::make_unique<Listener>())
{ }

PowerEvents::~PowerEvents() = default;

} // namespace tarqa::housekeeping

#include "PowerEvents_unix.moc"

#include "style/DesktopColours.h"

#include <QtCore/QVariant>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusServiceWatcher>
#include <QtDBus/QDBusVariant>
#include <QtNetwork/QLocalSocket>

#include <algorithm>
#include <cstddef>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace terrain {

namespace {

const char* const s_service = "org.freedesktop.portal.Desktop";
const char* const s_path = "/org/freedesktop/portal/desktop";
const char* const s_interface = "org.freedesktop.portal.Settings";
const char* const s_method = "Read";
const char* const s_signal = "SettingChanged";
const char* const s_signature = "ssv"; ///< of the signal: group, key and value
const char* const s_group = "org.freedesktop.appearance";
const char* const s_key = "color-scheme";
const unsigned int s_dark = 1;
const unsigned int s_light = 2;

const char* const s_connection = "tarq-terrain-desktop-colours"; ///< our name for it; one in a program
const char* const s_address_variable = "DBUS_SESSION_BUS_ADDRESS";
const char* const s_folder_variable = "XDG_RUNTIME_DIR"; ///< where the socket "bus" is if no address is set
const char* const s_socket = "unix:path=";
const char* const s_abstract_socket = "unix:abstract="; ///< without a file

/// The address of the user's message bus; empty if there is none.
QByteArray bus_address()
{
    if (!qEnvironmentVariableIsEmpty(s_address_variable)) {
        return qgetenv(s_address_variable).split(';').first();
    }
    const QByteArray folder = qgetenv(s_folder_variable);
    return folder.isEmpty() ? QByteArray() : s_socket + folder.toPercentEncoding("/") + "/bus";
}

/// As the operating system wants to have the name of the socket; empty for addresses of other kinds.
QByteArray socket_name(const QByteArray& address)
{
    const bool is_abstract = address.startsWith(s_abstract_socket);
    if (!is_abstract && !address.startsWith(s_socket)) {
        return QByteArray();
    }
    const QByteArray value = address.mid(address.indexOf('=') + 1).split(',').first();
    const QByteArray name = QByteArray::fromPercentEncoding(value);
    return is_abstract ? QByteArray(1, '\0') + name : name;
}

/// A connection to the socket, if that can be had at once. @return -1 if not
int connect_to_socket(const QByteArray& name)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (name.isEmpty() || static_cast<std::size_t>(name.size()) >= sizeof(address.sun_path)) {
        return -1;
    }
    std::copy(name.begin(), name.end(), address.sun_path);
    const std::size_t size = offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(name.size());
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (socket >= 0
        && ::connect(socket, reinterpret_cast<const sockaddr*>(&address), static_cast<socklen_t>(size))
            != 0) {
        ::close(socket);
        return -1;
    }
    return socket;
}

/**
 * Asks the desktop's portal on the user's message bus, and hears when the answer changes.
 *
 * Qt would wait, on the main thread and at the end of the program, for a bus that takes a connection and
 * never answers. So it is spoken to through a socket first, and Qt comes in when it has answered.
 */
class PortalListener : public QObject
{
    Q_OBJECT

public:
    explicit PortalListener(const DesktopColoursHandler& told)
        : m_told(told)
        , m_address(bus_address())
    {
        const int socket = connect_to_socket(socket_name(m_address));
        if (socket < 0) {
            return;
        }
        connect(&m_socket, &QLocalSocket::readyRead, this, &PortalListener::join);
        m_socket.setSocketDescriptor(socket);
        m_socket.write(QByteArray("\0AUTH\r\n", 7)); // answered with the ways to introduce oneself
    }

    /// What waits for an answer goes first: Qt would tell it, from its thread for the bus, that none will
    /// come.
    ~PortalListener() override
    {
        qDeleteAll(findChildren<QDBusPendingCallWatcher*>());
        qDeleteAll(findChildren<QDBusServiceWatcher*>());
        QDBusConnection::disconnectFromBus(s_connection);
    }

private slots:
    void setting_changed(const QString&, const QString&, const QDBusVariant& value) { take(value.variant()); }

private:
    /// The bus is alive.
    void join()
    {
        m_socket.disconnect(this);
        m_socket.abort();
        QDBusConnection bus = QDBusConnection::connectToBus(QString::fromUtf8(m_address), s_connection);
        if (!bus.isConnected()) {
            return;
        }
        bus.connect(s_service, s_path, s_interface, s_signal, QStringList{s_group, s_key}, s_signature, this,
            SLOT(setting_changed(QString, QString, QDBusVariant)));
        auto* const p_watcher
            = new QDBusServiceWatcher(s_service, bus, QDBusServiceWatcher::WatchForRegistration, this);
        connect(p_watcher, &QDBusServiceWatcher::serviceRegistered, this, &PortalListener::ask);
        ask();
    }

    void ask()
    {
        QDBusMessage question = QDBusMessage::createMethodCall(s_service, s_path, s_interface, s_method);
        question << s_group << s_key;
        auto* const p_answer
            = new QDBusPendingCallWatcher(QDBusConnection(s_connection).asyncCall(question), this);
        connect(p_answer, &QDBusPendingCallWatcher::finished, this, [this, p_answer] {
            p_answer->deleteLater();
            if (!p_answer->isError()) {
                take(p_answer->reply().arguments().value(0));
            }
        });
    }

    /// Whatever is no number says nothing. @param value in any number of wrappers
    void take(QVariant value) const
    {
        while (value.userType() == qMetaTypeId<QDBusVariant>()) {
            value = value.value<QDBusVariant>().variant();
        }
        if (value.userType() != QMetaType::UInt) {
            return;
        }
        const unsigned int colours = value.toUInt();
        m_told(colours == s_dark     ? DesktopColours::Dark
                : colours == s_light ? DesktopColours::Light
                                     : DesktopColours::NoPreference);
    }

    DesktopColoursHandler m_told;
    QByteArray m_address;
    QLocalSocket m_socket;
};

} // namespace

std::unique_ptr<QObject> watch_desktop_colours(const DesktopColoursHandler& told)
{
    return std::make_unique<PortalListener>(told);
}

} // namespace terrain

#include "ColourScheme_unix.moc"

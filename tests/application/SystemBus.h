#pragma once

#include <QtCore/QProcess>
#include <QtCore/QVariant>
#include <QtDBus/QDBusConnection>

#include <string>

/**
 * A message bus of the test's own, which the programs under test take for the operating system's. Starts
 * `dbus-daemon` in the scratch directory and names it in the environment; to be made before init().
 */
class SystemBus
{
public:
    /// Throws std::runtime_error if the bus cannot be started.
    SystemBus();
    ~SystemBus();
    SystemBus(const SystemBus&) = delete;
    SystemBus& operator=(const SystemBus&) = delete;

    const QString& address() const { return m_address; }
    /// Ends it by force.
    void kill();

    /// Makes @p address that of the system's bus, for this process and what it starts.
    static void use(const std::string& address);

private:
    QString m_address;
    QProcess m_daemon;
};

/// The socket of a bus, in the scratch directory, behind which nobody speaks.
class SilentBus
{
public:
    /// Throws std::runtime_error if there can be no such socket.
    SilentBus();
    ~SilentBus();
    SilentBus(const SilentBus&) = delete;
    SilentBus& operator=(const SilentBus&) = delete;

    const std::string& address() const { return m_address; }
    /// Closes every connection at once, until hang_up() is called in another thread.
    void refuse();
    void hang_up();

private:
    std::string m_address;
    int m_socket;
};

/// A program on the bus that announces that the machine is about to sleep and has woken up.
class SleepAnnouncer
{
public:
    /// Throws std::runtime_error if it cannot have the name.
    SleepAnnouncer(const SystemBus& bus, const QString& service);
    ~SleepAnnouncer();
    SleepAnnouncer(const SleepAnnouncer&) = delete;
    SleepAnnouncer& operator=(const SleepAnnouncer&) = delete;

    /// What differs from the announcement that counts.
    struct Announcement
    {
        QVariant value;
        QString path = "/org/freedesktop/login1";
        QString interface = "org.freedesktop.login1.Manager";
        QString signal = "PrepareForSleep";
    };

    void announce(bool sleeps) { announce(Announcement{sleeps}); }
    void announce(const Announcement& announcement);
    /// Waits until the bus has passed on all that was announced.
    void wait_for_the_bus();
    bool is_connected() const { return m_connection.isConnected(); }

private:
    QString m_name; // of the connection, not of the service
    QDBusConnection m_connection;
};

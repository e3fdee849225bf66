#pragma once

#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtDBus/QDBusConnection>

namespace support {
class MessageBus;
}

/// A program on the bus that announces that the machine is about to sleep and has woken up.
class SleepAnnouncer
{
public:
    /// Throws std::runtime_error if it cannot have the name.
    SleepAnnouncer(const support::MessageBus& bus, const QString& service);
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

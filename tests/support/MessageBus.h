#pragma once

#include <QtCore/QProcess>
#include <QtCore/QString>

#include <string>

namespace support {

/// The environment variables that tell programs where the buses are.
extern const char* const system_bus;
extern const char* const session_bus;

/**
 * A message bus of the test's own, which the programs under test take for the operating system's or the
 * user's. Starts `dbus-daemon` in the scratch directory and names it in the environment; to be made before
 * the objects that look for it.
 */
class MessageBus
{
public:
    /// @param variable one of those above
    /// @param address where it listens; without it, at the socket "bus" in the scratch directory
    /// Throws std::runtime_error if the bus cannot be started.
    explicit MessageBus(const char* variable, const QString& address = QString());
    ~MessageBus();
    MessageBus(const MessageBus&) = delete;
    MessageBus& operator=(const MessageBus&) = delete;

    const QString& address() const { return m_address; }
    /// Ends it by force.
    void kill();

    /// Makes @p address that of a bus, for this process and what it starts.
    static void use(const char* variable, const std::string& address);

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

} // namespace support

#pragma once

#include <QtCore/QProcess>
#include <QtCore/QString>

namespace support {

/**
 * A screen that nobody sees, for programs that a test starts: an X server of its own, which picks a display
 * that is free. It goes with the object, and with the test process if that is killed. Main thread.
 */
class VirtualScreen
{
public:
    /// Starts the server and waits for it; fails the test if there is none.
    VirtualScreen();
    ~VirtualScreen();
    VirtualScreen(const VirtualScreen&) = delete;
    VirtualScreen& operator=(const VirtualScreen&) = delete;

    /// For the environment variable DISPLAY, for example ":99".
    const QString& display() const { return m_display; }

private:
    class Server : public QProcess
    {
        void setupChildProcess() override;
    };

    Server m_server;
    QString m_display;
};

} // namespace support

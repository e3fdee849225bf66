#include "support/VirtualScreen.h"

#include <gtest/gtest.h>

#include <csignal>

#include <sys/prctl.h>

namespace support {

namespace {

const int s_patience = 60000; ///< milliseconds, for a machine that is very busy

} // namespace

VirtualScreen::VirtualScreen()
{
    m_server.setStandardErrorFile(QProcess::nullDevice());
    // The server picks the number itself: two that look for a free one at the same time cannot take the same.
    m_server.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1600x1000x24", "-nolisten", "tcp"});
    while (!m_server.canReadLine() && m_server.waitForReadyRead(s_patience)) { }
    const QString number = QString::fromLatin1(m_server.readLine()).trimmed();
    if (number.isEmpty()) {
        ADD_FAILURE() << "Xvfb does not start: " << m_server.errorString().toStdString();
    }
    m_display = ":" + number;
}

VirtualScreen::~VirtualScreen()
{
    m_server.terminate();
    if (!m_server.waitForFinished(s_patience)) {
        m_server.kill();
        m_server.waitForFinished();
    }
}

void VirtualScreen::Server::setupChildProcess()
{
    prctl(PR_SET_PDEATHSIG, SIGTERM);
}

} // namespace support

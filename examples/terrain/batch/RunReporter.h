#pragma once

#include <tarqa/housekeeping/CommandMessage.h>

#include <QtCore/QObject>

#include <ostream>
#include <string>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/// Prints the protocol of every run of a command, and remembers how the last one ended. Lives in the thread
/// that runs the commands.
class RunReporter : public QObject
{
    Q_OBJECT

public:
    /// @param out where to print; must outlive the object
    explicit RunReporter(std::ostream& out);

    /// Forgets how the last run ended.
    void reset();
    /// Whether the last run failed or was cancelled; a composite that passed over a failing child failed too.
    bool failed() const { return m_failed; }
    /// Why; empty if it was cancelled.
    const std::string& failure() const { return m_failure; }

private slots:
    void handle_message(housekeeping::CommandMessage& message);

private:
    std::ostream& m_out;
    bool m_failed = false;
    std::string m_failure;
};

} // namespace terrain

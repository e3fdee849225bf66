#pragma once

#include <tarqa/housekeeping/CommandMessage.h>

#include <QtCore/QObject>

namespace tarqa::housekeeping::testkit {

/// Hears how the run of a command ended.
class RunWatch : public QObject
{
    Q_OBJECT

public:
    RunWatch();
    ~RunWatch() override;

    /// Whether a run ended since this object was made.
    bool heard() const { return m_heard; }
    CommandMessage::CommandType type() const { return m_type; }

public slots:
    void handle_message(housekeeping::CommandMessage& message);

private:
    bool m_heard = false;
    CommandMessage::CommandType m_type = CommandMessage::Failed;
};

} // namespace tarqa::housekeeping::testkit

#pragma once

#include <tarqa/housekeeping/DocumentMessage.h>

#include <QtCore/QObject>

#include <functional>

namespace host_test {

namespace housekeeping = tarqa::housekeeping;

/// Does something whenever a document gets busy, which is right before a command runs.
class BusyHook : public QObject
{
    Q_OBJECT

public:
    explicit BusyHook(std::function<void()> action)
        : m_action(std::move(action))
    {
        housekeeping::DocumentMessage::subscribe(this, Qt::DirectConnection);
    }

private slots:
    void handle_message(housekeeping::DocumentMessage& message)
    {
        if (message.doc_change_type() == housekeeping::DocumentMessage::Busy) {
            m_action();
        }
    }

private:
    std::function<void()> m_action;
};

} // namespace host_test

#pragma once

#include <tarqa/housekeeping/ApplicationMessage.h>
#include <tarqa/housekeeping/CommandMessage.h>
#include <tarqa/housekeeping/DocumentHistoryMsg.h>
#include <tarqa/housekeeping/DocumentMessage.h>
#include <tarqa/housekeeping/FilesInsertMessage.h>
#include <tarqa/housekeeping/gui/MainWindowMessage.h>

#include <QtCore/QObject>
#include <QtCore/QThread>

#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace support {

namespace housekeeping = tarqa::housekeeping; // the slots must spell their parameter's type this way

/// A thread with an event loop, from construction to destruction; move spies into it with moveToThread().
class EventThread : public QThread
{
public:
    EventThread() { start(); }
    ~EventThread() override
    {
        quit();
        wait();
    }
};

/// Runs the event loop of the calling thread until @p condition holds; false if it does not within some
/// seconds.
bool wait_until(const std::function<bool()>& condition);

/// What every received message leaves behind; the concrete entries add copies of the message's fields.
struct ReceivedMessage
{
    QThread* thread = nullptr; ///< in which the slot ran
    const void* message = nullptr; ///< address of the message; do not dereference
};

struct ReceivedApplicationMessage : ReceivedMessage
{
    int op_type = 0;
};

struct ReceivedCommandMessage : ReceivedMessage
{
    const housekeeping::AbstractCommand* command = nullptr; ///< may dangle after the message
    unsigned long long id = 0;
    int command_type = 0;
    unsigned long long document_id = 0;
    bool redo = false;
};

struct ReceivedDocumentHistoryMsg : ReceivedMessage
{
    int kind = 0;
};

struct ReceivedDocumentMessage : ReceivedMessage
{
    int type = 0;
    unsigned long long id = 0; ///< 0 as well if the message had none
    bool id_set = false;
};

struct ReceivedFilesInsertMessage : ReceivedMessage
{
    unsigned long long document_id = 0;
    std::vector<std::string> files;
};

struct ReceivedMainWindowMessage : ReceivedMessage
{
    int kind = 0;
    QWidget* target = nullptr;
    QWidget* owner = nullptr;
};

/**
 * What all spies share: the list of received messages and an action that runs in the slot, after the message
 * was noted (to add entries, to throw, to send more). Any thread.
 */
template <class X, class Entry>
class Recorder
{
public:
    typedef X Sent;
    typedef Entry Received;

    std::vector<Entry> received() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_received;
    }
    int count() const { return static_cast<int>(received().size()); }
    void clear()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_received.clear();
    }
    void run_in_slot(std::function<void(X&)> action)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_action = std::move(action);
    }
    /// Runs the event loop of the calling thread until @p count messages came; false if they do not.
    bool wait_for(int expected) const
    {
        return wait_until([this, expected] { return count() >= expected; });
    }

protected:
    void record(Entry entry, X& message)
    {
        entry.thread = QThread::currentThread();
        entry.message = &message;
        std::function<void(X&)> action;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_received.push_back(std::move(entry));
            action = m_action;
        }
        if (action) {
            action(message);
        }
    }

private:
    mutable std::mutex m_mutex;
    std::vector<Entry> m_received; // guarded by m_mutex
    std::function<void(X&)> m_action; // guarded by m_mutex
};

/// Whether a spy subscribes in its constructor, with Qt::AutoConnection.
enum class Subscription
{
    AtOnce,
    None
};

class ApplicationMessageSpy : public QObject,
                              public Recorder<housekeeping::ApplicationMessage, ReceivedApplicationMessage>
{
    Q_OBJECT

public:
    explicit ApplicationMessageSpy(Subscription subscription = Subscription::AtOnce);

public slots:
    void handle_message(housekeeping::ApplicationMessage& message);
    void other_slot(housekeeping::ApplicationMessage& message) { handle_message(message); }
};

class CommandMessageSpy : public QObject,
                          public Recorder<housekeeping::CommandMessage, ReceivedCommandMessage>
{
    Q_OBJECT

public:
    explicit CommandMessageSpy(Subscription subscription = Subscription::AtOnce);

public slots:
    void handle_message(housekeeping::CommandMessage& message);
    void other_slot(housekeeping::CommandMessage& message) { handle_message(message); }
};

class DocumentHistoryMsgSpy : public QObject,
                              public Recorder<housekeeping::DocumentHistoryMsg, ReceivedDocumentHistoryMsg>
{
    Q_OBJECT

public:
    explicit DocumentHistoryMsgSpy(Subscription subscription = Subscription::AtOnce);

public slots:
    void handle_message(housekeeping::DocumentHistoryMsg& message);
    void other_slot(housekeeping::DocumentHistoryMsg& message) { handle_message(message); }
};

class DocumentMessageSpy : public QObject,
                           public Recorder<housekeeping::DocumentMessage, ReceivedDocumentMessage>
{
    Q_OBJECT

public:
    explicit DocumentMessageSpy(Subscription subscription = Subscription::AtOnce);

    /// The types of the received messages, in order.
    std::vector<int> types() const;

public slots:
    void handle_message(housekeeping::DocumentMessage& message);
    void other_slot(housekeeping::DocumentMessage& message) { handle_message(message); }
};

class FilesInsertMessageSpy : public QObject,
                              public Recorder<housekeeping::FilesInsertMessage, ReceivedFilesInsertMessage>
{
    Q_OBJECT

public:
    explicit FilesInsertMessageSpy(Subscription subscription = Subscription::AtOnce);

public slots:
    void handle_message(housekeeping::FilesInsertMessage& message);
    void other_slot(housekeeping::FilesInsertMessage& message) { handle_message(message); }
};

class MainWindowMessageSpy : public QObject,
                             public Recorder<housekeeping::gui::MainWindowMessage, ReceivedMainWindowMessage>
{
    Q_OBJECT

public:
    explicit MainWindowMessageSpy(Subscription subscription = Subscription::AtOnce);

public slots:
    void handle_message(housekeeping::gui::MainWindowMessage& message);
    void other_slot(housekeeping::gui::MainWindowMessage& message) { handle_message(message); }
};

} // namespace support

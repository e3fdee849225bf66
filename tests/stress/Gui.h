#pragma once

#include "Faults.h"
#include "Flow.h"
#include "LoadMessages.h"
#include "NumbersDocument.h"

#include <tarqa/housekeeping/UndoRedoController.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtCore/QEventLoop>
#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <functional>
#include <vector>

namespace load {

/**
 * What a window does while threads work: the library's undo and redo lists, which it has shown for one
 * document after the other, and messages of its own. Main thread.
 */
class Gui : public QObject
{
    Q_OBJECT

public:
    /// @param documents of the threads, in order
    Gui(const std::vector<NumbersDocument*>& documents, Flow& flow, Faults& faults);
    ~Gui() override;

    /// The library's own receivers take no messages any more.
    void silence();
    /// Runs the event loop until @p finished, and for one more turn.
    void run_until(const std::function<bool()>& finished);
    /// Delivers what is still under way; the threads have ended.
    void deliver_rest();

    /// The number among the senders of messages that stands for it.
    unsigned sender_number() const { return static_cast<unsigned>(m_documents.size()); }
    const MessageCounts& sent() const { return m_sender.sent(); }
    unsigned long long listings() const { return m_listings; }
    /// How often it made another document current.
    unsigned long long current_changes() const { return m_current_changes; }

public slots:
    /// Called in its turn for each batch of work: all that was sent before has been taken.
    void caught_up() { ++m_caught_up; }

private slots:
    void tick();

private:
    static housekeeping::UndoRedoController& controller();
    void list(std::size_t thread);
    void check(std::size_t thread, const std::vector<housekeeping::CommandDetails>& details);

    std::vector<NumbersDocument*> m_documents; // not owned
    Flow& m_flow;
    Faults& m_faults;
    Sender m_sender;
    QTimer m_timer;
    QEventLoop m_loop;
    std::function<bool()> m_finished;
    unsigned m_caught_up = 0;
    unsigned long long m_listings = 0;
    unsigned long long m_current_changes = 0;
};

} // namespace load

#pragma once

#include "Faults.h"
#include "Flow.h"
#include "Gui.h"
#include "LoadEntries.h"
#include "LoadMessages.h"
#include "LoadPlan.h"
#include "LoadThread.h"

#include <atomic>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace load {

struct Options
{
    unsigned long long seed = 1;
    unsigned threads = 8; ///< at most 15; each has a document
    unsigned long long steps = 800; ///< of each thread; 0: until the time is over
    int seconds = 0; ///< without steps
    /// Whether the main thread takes copies of the threads' messages, as the library's own controller and
    /// presentation do. Else it takes posted messages only.
    bool queued = true;
    Mix mix;
};

/// What a run came to.
struct Report
{
    std::vector<std::pair<std::string, unsigned long long>> rows;
    unsigned long long fault_count = 0;
    std::vector<std::string> faults; ///< the first ones

    unsigned long long row(const std::string& name) const;
};
std::ostream& operator<<(std::ostream& stream, const Report& report);

/**
 * Threads that insert, undo and redo on documents of their own, mark them and each other's busy, send and
 * post messages and log, while the main thread lists histories; and the look at what became of it: every
 * message, every entry of the log, every history. Needs an application object; main thread.
 */
class Load
{
public:
    explicit Load(const Options& options);
    ~Load();
    Load(const Load&) = delete;
    Load& operator=(const Load&) = delete;

    /// Once. Leaves its entries in the error log.
    Report run();

private:
    Plan plan(unsigned thread) const { return Plan(m_options.seed, thread, m_options.mix); }
    static std::vector<NumbersDocument*> create_documents(unsigned count);
    void run_threads();
    void work(unsigned thread);
    void replay(const std::vector<NumbersDocument*>& documents) const;

    std::string read_log() const;
    void check_entries();
    void check_busy();
    void check_messages();
    void check_subscriber(const Subscriber& subscriber, const std::string& name);
    void check_histories();
    void check_document(unsigned thread, const NumbersDocument& document, const std::string& name);
    void add_row(const std::string& name, unsigned long long value)
    {
        m_report.rows.emplace_back(name, value);
    }
    void add_rows_of_steps();

    Options m_options;
    Faults m_faults;
    Flow m_flow;
    std::vector<NumbersDocument*> m_documents; // owned by the document manager
    std::unique_ptr<Gui> m_gui;
    std::unique_ptr<Subscriber> m_direct; // in the senders' threads
    std::unique_ptr<Subscriber> m_queued; // on the main thread; null if not wanted
    std::vector<std::unique_ptr<LoadThread>> m_threads;
    std::vector<unsigned long long> m_steps; // done, by thread
    std::atomic<unsigned> m_running{0};
    std::atomic<bool> m_stop{false};
    std::size_t m_log_begin = 0;
    std::vector<ExpectedEntries> m_expected; // by thread
    Report m_report;
};

} // namespace load

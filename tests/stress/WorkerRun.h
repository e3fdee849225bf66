#pragma once

#include "NumbersDocument.h"
#include "WorkerCommand.h"

#include <atomic>
#include <thread>
#include <vector>

namespace load {

/// Eight documents with histories, and the library's presentation that shows them. Main thread.
class ShownDocuments
{
public:
    ShownDocuments();
    ~ShownDocuments();
    ShownDocuments(const ShownDocuments&) = delete;
    ShownDocuments& operator=(const ShownDocuments&) = delete;

    const std::vector<NumbersDocument*>& all() const { return m_documents; }
    NumbersDocument& first() const { return *m_documents.front(); }

private:
    std::vector<NumbersDocument*> m_documents; // owned by the document manager
};

/// A command that is inserted from a thread of its own, at once.
class WorkerRun
{
public:
    WorkerRun(const NumbersDocument& document, const WorkerCommand::Work& work);
    ~WorkerRun();
    WorkerRun(const WorkerRun&) = delete;
    WorkerRun& operator=(const WorkerRun&) = delete;

    WorkerCommand& command() const { return *m_sp_command; }
    const ProgressRelay& progress() const { return m_progress; }
    bool finished() const { return m_finished; }

    void join();
    /// When insert() came back; after join().
    Clock::time_point end() const { return m_end; }

private:
    ProgressRelay m_progress;
    boost::shared_ptr<WorkerCommand> m_sp_command;
    Clock::time_point m_end;
    std::atomic<bool> m_finished{false};
    std::thread m_thread;
};

} // namespace load

#include "WorkerRun.h"

#include "support/App.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>

using load::GuiCall;
using load::ShownDocuments;
using load::WorkerCommand;
using load::WorkerRun;

// What hk_stress_load measures, without a clock. Runs in a worker send copies of messages to the main thread,
// hence the name of the suite; see LoadTest.cpp.

namespace {

/// The worker's side of a signal. It comes, unless the main thread waits for the run in turn.
bool comes(const std::future<void>& signal)
{
    return signal.wait_for(std::chrono::seconds(60)) == std::future_status::ready;
}

} // namespace

TEST(LoadQueued, MainThreadWaitsForNoRunWhateverItMayCall)
{
    const support::App app;
    support::LogCapture log;
    const ShownDocuments documents;
    for (const GuiCall& gui_call : load::gui_calls(documents.all())) {
        std::promise<void> started;
        std::promise<void> called;
        const std::future<void> until_called = called.get_future();
        bool came = false;
        WorkerRun run(documents.first(), [&](WorkerCommand&) {
            started.set_value();
            came = comes(until_called);
        });
        started.get_future().wait();
        gui_call.call();
        called.set_value();
        run.join();
        EXPECT_TRUE(came) << gui_call.name;
    }
    EXPECT_EQ(documents.first().document_history().redoSize(), 0u); // nothing was undone
    EXPECT_TRUE(log.take("from the main thread"));
}

TEST(LoadQueued, RunEndsAtTheNextReportAfterTheRequest)
{
    const support::App app;
    const ShownDocuments documents;
    std::promise<void> started;
    std::promise<void> requested;
    const std::future<void> until_requested = requested.get_future();
    bool went_on = false;
    WorkerRun run(documents.first(), [&](WorkerCommand& command) {
        command.report(1);
        started.set_value();
        EXPECT_TRUE(comes(until_requested));
        command.report(2);
        went_on = true;
    });
    started.get_future().wait();
    run.command().request_cancel();
    requested.set_value();
    run.join();
    EXPECT_EQ(run.command().reports.size(), 2u);
    EXPECT_FALSE(went_on);
    EXPECT_TRUE(run.command().rolled_back);
    EXPECT_TRUE(run.finished());
}

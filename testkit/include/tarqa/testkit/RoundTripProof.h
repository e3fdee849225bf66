#pragma once

#include <tarqa/testkit/Breach.h>
#include <tarqa/testkit/Promise.h>
#include <tarqa/testkit/tq_hk_testkit_export.h>

#include <boost/shared_ptr.hpp>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tarqa::housekeeping {
class AbstractCommand;
class AbstractDocument;
} // namespace tarqa::housekeeping

namespace tarqa::housekeeping::testkit {

/**
 * Tries whether commands keep what they promise, and says which promise is broken and where:
 *
 *     RoundTripProof proof(
 *         []() -> AbstractDocument& {
 *             auto& document = DocumentManager::instance().create_document();
 *             fill(document);
 *             return document;
 *         },
 *         [](AbstractDocument& document) { return text_of_all_values(document); });
 *     proof.command("Rotate", [](AbstractDocument& document) {
 *         return boost::make_shared<RotateCommand>(document, 90);
 *     });
 *     EXPECT_EQ(text_of(proof.run()), "");
 *
 * Each experiment begins with fresh documents and goes through the command manager, as a host does. A command
 * is done, undone and redone several times; run without a progress sink; cancelled at its progress reports
 * and made to fail at them, in a first run and in a redo, with a FailedCommandException and with exceptions
 * that nobody expects (a std::runtime_error, a std::bad_alloc, a HousekeepingException); listed in the
 * history and kept from running, as by a subscriber that throws; let go; and run after other commands, merged
 * where it lets itself be merged, and undone and redone with them. See Promise for what is looked at.
 *
 * What it cannot see: a command that hangs (the proof hangs with it; give the test a time limit), what the
 * digest leaves out, what goes wrong between two progress reports (a command that reports nothing is neither
 * cancelled nor made to fail: reports() says so), a redo after an undo that was kept from running, and data
 * races: run the test under ThreadSanitizer for these.
 *
 * The exceptions that nobody expects take the road of a fatal error. That empties the error log, writes to
 * std::cerr (which the proof discards meanwhile) and calls the function that leaves the main loop, so the
 * proof is not to be run inside a program's main loop.
 *
 * A composite asks whether to go on after a child that failed. In a program with a QApplication, that allows
 * boxes (see ErrorHandler::show_dialogs()), each composite is tried with the answers Cancel, Yes and Yes to
 * All: the box appears, and the proof clicks; any other box in these runs is answered with Ok or No. No other
 * DialogDriver may live meanwhile. Without a QApplication nothing can be asked, and the only answer is going
 * on; questions() is 0 then. Apart from that no box is shown.
 *
 * Main thread, because documents are made and destroyed. What the makers throw goes to the caller of run().
 */
class TQ_HK_TESTKIT_EXPORT RoundTripProof
{
public:
    /// Makes a document in the document manager, always of the same content. The proof destroys it.
    typedef std::function<AbstractDocument&()> MakeDocument;
    /// The state of a document that commands change and undo brings back, as lines of text.
    typedef std::function<std::string(AbstractDocument&)> Digest;
    /// Makes a command for the document, which it does not change. Null after a command that leaves nothing
    /// to do for it; not null for a fresh document.
    typedef std::function<boost::shared_ptr<AbstractCommand>(AbstractDocument&)> MakeCommand;
    /// Whether a document counts as modified.
    typedef std::function<bool(AbstractDocument&)> IsModified;

    /// @param make_document and @param digest are called often; neither may be empty
    RoundTripProof(MakeDocument make_document, Digest digest);
    ~RoundTripProof();
    RoundTripProof(const RoundTripProof&) = delete;
    RoundTripProof& operator=(const RoundTripProof&) = delete;

    /// Adds a command to try. Several are also tried together: each pair for merging, and all one after the
    /// other.
    /// @param label what the breaches call it
    /// @param make_command called often, with fresh documents
    RoundTripProof& command(const std::string& label, MakeCommand make_command);

    /// Does not look at a promise.
    /// @param promise which one
    /// @param reason why not, for the reader
    RoundTripProof& except(Promise promise, const std::string& reason);
    /// How documents say that they are modified; without it, ModifiedStays is not looked at.
    RoundTripProof& modified(IsModified is_modified);
    /// Entries of the error log that hold @p part are expected from an undisturbed run.
    RoundTripProof& expect_log(const std::string& part);
    /// Also tries whether a worker thread does the same, for commands that are run beside the window: do and
    /// redo there, undo in the main thread, which waits meanwhile without an event loop. Subscribers and the
    /// document hear of the runs in the worker.
    RoundTripProof& in_worker();
    /// How often a command is undone and redone; 3 unless said otherwise, 1 at least.
    RoundTripProof& rounds(int count);
    /// At how many of its progress reports a command is disturbed at most; 20 unless said otherwise. Of more
    /// reports the first, the last, and as many between them are taken; 0 disturbs nothing.
    RoundTripProof& places(int count);

    /// Tries everything. @return what is broken, in the order of finding; of each promise of a command the
    /// first three
    std::vector<Breach> run();

    /// How many documents the last run() went through.
    int experiments() const;
    /// How often the commands of the last run() reported progress in their undisturbed first runs.
    int reports() const;
    /// How many questions of composites the last run() answered; 0 where no box can be shown.
    int questions() const;

private:
    struct Plan;

    std::unique_ptr<Plan> m_p_plan;
    int m_experiments = 0;
    int m_reports = 0;
    int m_questions = 0;
};

} // namespace tarqa::housekeeping::testkit

#pragma once

#include "Disturbance.h"
#include "Findings.h"
#include "ProofSettings.h"
#include "ReportSink.h"

#include <tarqa/housekeeping/CommandId.h>
#include <tarqa/housekeeping/DocumentId.h>

#include <boost/shared_ptr.hpp>

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace tarqa::housekeeping::testkit {

/// How a run of a command ended.
struct Run
{
    bool succeeded = false; ///< as its message says
    bool fatal = false; ///< with a fatal error
    std::vector<std::string> log; ///< the entries that it wrote, but for its protocol
    std::vector<unsigned int> reports; ///< the percentages
};

/**
 * A fresh document, a second one that must stay as it is, and the commands that are run on the first. The
 * second one is current, so that a command which takes the current one for its own is found out. Looks
 * after every step at what holds for all of them. The documents go with it.
 */
class Experiment
{
public:
    typedef boost::shared_ptr<AbstractCommand> Command;

    /// @param label what the breaches call the command, or the commands @param title what is tried
    Experiment(const ProofSettings& settings, Findings& findings, const std::string& label,
        const std::string& title);
    ~Experiment();
    Experiment(const Experiment&) = delete;
    Experiment& operator=(const Experiment&) = delete;

    /// True after an exception that left the command manager: nothing is to be done any more.
    bool is_over() const { return m_over; }
    /// The digest of the document before anything was done.
    const std::string& fresh() const { return m_fresh; }
    std::string digest() const;
    bool can_undo() const;
    bool can_redo() const;
    unsigned long long undo_size() const;

    /// A new command, with the sink. Null if there is none; for the first one that is a breach.
    Command make(const Subject& subject);

    // One run each, of the command that is the next one of the history.
    Run insert(const Command& command, const std::string& step, const Disturbance& disturbance = {});
    Run undo(const std::string& step);
    Run redo(const Command& command, const std::string& step, const Disturbance& disturbance = {});

    /// From now on do and redo run in worker threads, one for each, while the main thread waits.
    void do_in_worker() { m_in_worker = true; }

    // The command is entered into the history, and kept from running.
    void insert_without_run(const Command& command, const std::string& step);
    void redo_without_run(const std::string& step);

    /// Forgets the command, which goes if the history does not hold it; nothing is to change by that.
    void let_go(Command& command, const std::string& step);

    // Each is true if it is so, and a breach of the promise if not.
    bool expect_done(const Run& run, Promise promise, const std::string& step);
    bool expect_state(const std::string& expected, Promise promise, const std::string& step);

    void breach(Promise promise, const std::string& step, const std::string& difference);
    /// Whether fresh documents, and digests of one, are alike.
    void compare_documents();
    /// What is looked at once, at the end.
    void finish();

private:
    /// A document that is destroyed at the end.
    class Held
    {
    public:
        explicit Held(AbstractDocument& document);
        ~Held();
        Held(const Held&) = delete;
        Held& operator=(const Held&) = delete;

        AbstractDocument& operator*() const { return m_document; }
        AbstractDocument* operator->() const { return &m_document; }
        const DocumentId& id() const { return m_id; }

    private:
        AbstractDocument& m_document; // the document manager's
        DocumentId m_id;
    };

    /// A command as it was when it was made.
    struct Made
    {
        Command command;
        std::string name;
        CommandId id;
        std::array<bool, 4> flags{};
        bool has_breaks = false; ///< in a text that is to be one line
    };

    Run perform(const std::string& step, const std::function<void()>& action, AbstractCommand* p_command,
        const Disturbance& disturbance);
    void attempt(const std::string& step, const std::function<void()>& action);
    void call(const std::function<void()>& action) const;
    void keep_from_running(const std::string& step, const std::function<void()>& action);
    std::vector<std::string> without_protocol(std::vector<std::string> log) const;
    void look_at_texts(Made& made, const std::string& step);
    void look_at_log(const Run& run, const std::string& step, Promise promise_of_fatal);
    void look_at_commands(const std::string& step);
    void look_at_modified(const std::string& step);
    void look_at_busy_marks(const std::string& step);
    void look_at_other_document(const std::string& step);

    const ProofSettings& m_settings;
    Findings& m_findings;
    std::string m_label;
    std::string m_title;
    bool m_over = false;
    bool m_in_worker = false;
    ReportSink m_sink;
    Held m_other;
    Held m_document;
    std::string m_fresh;
    std::string m_fresh_other;
    std::vector<Made> m_made; // goes first: they may refer to their document
};

} // namespace tarqa::housekeeping::testkit

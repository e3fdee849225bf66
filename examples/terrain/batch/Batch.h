#pragma once

#include "batch/BatchProgress.h"
#include "batch/RunReporter.h"

#include <QtCore/QCoreApplication>

#include <boost/shared_ptr.hpp>

#include <istream>
#include <ostream>
#include <string>
#include <vector>

namespace tarqa::housekeeping {
class AbstractCommand;
}

namespace terrain {

class TerrainDocument;

/**
 * Carries out scripts; see CommandLine::usage() for their lines. It reads a line and carries it out before it
 * reads the next one, so a script may also come from somebody who types. Stops at the first line that fails.
 *
 * Main thread; needs no display. One at a time.
 */
class Batch
{
    Q_DECLARE_TR_FUNCTIONS(terrain::Batch)

public:
    enum ExitCode : int
    {
        Done = 0,
        Failed = 1,
        WrongUsage = 2,
        Interrupted = 130
    };

    /// @param out for the protocol, @param error for messages; both must outlive the object
    /// @param p_terminal where to show the progress of commands; null for nowhere
    Batch(std::ostream& out, std::ostream& error, std::ostream* p_terminal);

    /// Opens @p files and carries out @p script, a file or "-" for the standard input. Never throws.
    ExitCode run(const std::string& script, const std::vector<std::string>& files);

private:
    typedef std::vector<std::string> Words;
    struct Instruction;
    static const std::vector<Instruction>& instructions();

    template <class Work>
    ExitCode guarded(const std::string& where, Work work);
    ExitCode run_files(const std::vector<std::string>& files);
    ExitCode run_script(const std::string& script);
    ExitCode run_lines(const std::string& name, std::istream& lines);
    void carry_out(const Words& words);
    void report_failure(const std::string& where, const std::string& text);

    // One for each instruction; the words are its arguments.
    void open(const Words& words);
    void smooth(const Words& words);
    void fill_sinks(const Words& words);
    void clamp(const Words& words);
    void scale(const Words& words);
    void crop(const Words& words);
    void resample(const Words& words);
    void triangulate(const Words& words);
    void clean_up(const Words& words);
    void raise(const Words& words);
    void lower(const Words& words);
    void flatten(const Words& words);
    void undo(const Words& words);
    void redo(const Words& words);
    void info(const Words& words);
    void write_export(const Words& words);

    TerrainDocument& document() const;
    template <class Command, class... Arguments>
    void execute(Arguments... arguments);
    template <class Steps, class Step>
    void repeat(const Words& words, const QString& verb, Steps available, Step step);
    void check_last_run() const;

    std::ostream& m_out;
    std::ostream& m_error;
    BatchProgress m_progress;
    RunReporter m_reporter;
};

} // namespace terrain

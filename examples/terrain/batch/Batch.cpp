#include "batch/Batch.h"

#include "batch/RasterReport.h"
#include "batch/Script.h"
#include "batch/System.h"
#include "commands/BrushCommand.h"
#include "commands/ClampCommand.h"
#include "commands/CleanUpCommand.h"
#include "commands/CropCommand.h"
#include "commands/FillSinksCommand.h"
#include "commands/FlattenCommand.h"
#include "commands/ResampleCommand.h"
#include "commands/ScaleCommand.h"
#include "commands/SmoothCommand.h"
#include "commands/TriangulateCommand.h"
#include "documents/ExportTerrain.h"
#include "documents/OpenTerrain.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/utilities/Exception.h>

#include <QtCore/QFileInfo>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <iostream>

namespace terrain {

namespace {

const std::size_t s_most_corners = 100000; ///< of a polygon

std::atomic<bool> s_fatal_error{false};

/// @throws ScriptError if there is no such method
Resampling resampling_of(const std::string& word)
{
    for (const Resampling method : {Resampling::Nearest, Resampling::Bilinear, Resampling::Average}) {
        if (word == ResampleCommand::name_of(method)) {
            return method;
        }
    }
    throw ScriptError(QObject::tr("\"%1\" is not \"nearest\", \"bilinear\" or \"average\"")
                          .arg(QString::fromStdString(word)));
}

/// Of a dab: column, row, radius and height.
Brush brush_of(Brush::Direction direction, const std::vector<std::string>& words)
{
    return {direction, number_of(words[2]), number_of(words[3])};
}

BrushCommand::Path path_of(const std::vector<std::string>& words)
{
    return {QPointF(number_of(words[0]), number_of(words[1]))};
}

void note_fatal_error()
{
    s_fatal_error = true;
}

housekeeping::ErrorProtocol& error_log()
{
    return housekeeping::ErrorProtocol::instance();
}

} // namespace

/// A word that a line may begin with.
struct Batch::Instruction
{
    const char* name;
    std::size_t min_arguments;
    std::size_t max_arguments;
    void (Batch::*carry_out)(const Words& words);
};

const std::vector<Batch::Instruction>& Batch::instructions()
{
    static const std::vector<Instruction> s_instructions = {
        {"open", 1, 1, &Batch::open},
        {"smooth", 1, 1, &Batch::smooth},
        {"fill-sinks", 0, 0, &Batch::fill_sinks},
        {"clamp", 2, 2, &Batch::clamp},
        {"scale", 1, 1, &Batch::scale},
        {"crop", 4, 4, &Batch::crop},
        {"resample", 1, 2, &Batch::resample},
        {"triangulate", 1, 1, &Batch::triangulate},
        {"clean-up", 0, 0, &Batch::clean_up},
        {"raise", 4, 4, &Batch::raise},
        {"lower", 4, 4, &Batch::lower},
        {"flatten", 7, 2 * s_most_corners + 1, &Batch::flatten},
        {"undo", 0, 1, &Batch::undo},
        {"redo", 0, 1, &Batch::redo},
        {"info", 0, 0, &Batch::info},
        {"export", 1, 2, &Batch::write_export},
    };
    return s_instructions;
}

Batch::Batch(std::ostream& out, std::ostream& error, std::ostream* p_terminal)
    : m_out(out)
    , m_error(error)
    , m_progress(p_terminal)
    , m_reporter(out)
{
    // There is no main loop to leave: the batch looks after every line.
    housekeeping::ErrorHandler::exit_main_loop_with(&note_fatal_error);
}

Batch::ExitCode Batch::run(const std::string& script, const std::vector<std::string>& files)
{
    ExitCode code = run_files(files);
    if (code == Done) {
        code = run_script(script);
    }
    m_out << tr("error log: ").toStdString() << error_log().log_filename() << std::endl;
    if (!m_out && code == Done) {
        report_failure("tarq-terrain", tr("the standard output cannot be written").toStdString());
        code = Failed;
    }
    return code;
}

/// Does @p work and tells, with @p where in front, what went wrong.
template <class Work>
Batch::ExitCode Batch::guarded(const std::string& where, Work work)
{
    bool failed = true;
    try {
        work();
        failed = false;
    } catch (const ScriptError& error) {
        report_failure(where, error.what());
    } catch (tarqa::Exception& exception) {
        housekeeping::ErrorHandler::instance().report_exception(exception);
        report_failure(where, exception.what());
    } catch (const std::exception& exception) {
        housekeeping::ErrorHandler::instance().report_exception(exception);
        report_failure(where, exception.what());
    }
    m_out << std::flush;
    if (interrupted()) {
        return Interrupted;
    }
    return failed ? Failed : Done;
}

Batch::ExitCode Batch::run_files(const std::vector<std::string>& files)
{
    for (const std::string& file : files) {
        const ExitCode code = guarded("tarq-terrain", [&] { open({file}); });
        if (code != Done) {
            return code;
        }
    }
    return Done;
}

Batch::ExitCode Batch::run_script(const std::string& script)
{
    if (script == "-") {
        return run_lines(script, std::cin);
    }
    std::ifstream lines;
    const ExitCode code = guarded("tarq-terrain", [&] {
        lines.open(script, std::ios::binary);
        if (!lines || QFileInfo(QFile::decodeName(script.c_str())).isDir()) {
            throw ScriptError(tr("Cannot read the script \"%1\"").arg(QString::fromStdString(script)));
        }
    });
    return code == Done ? run_lines(script, lines) : code;
}

Batch::ExitCode Batch::run_lines(const std::string& name, std::istream& lines)
{
    std::string line;
    for (unsigned long long number = 1; std::getline(lines, line); ++number) {
        const ExitCode code
            = guarded(name + ":" + std::to_string(number), [&] { carry_out(words_of(line)); });
        if (code != Done) {
            return code;
        }
    }
    return interrupted() ? Interrupted : Done;
}

void Batch::carry_out(const Words& words)
{
    if (words.empty()) {
        return;
    }
    const QString name = QString::fromStdString(words.front());
    const auto found = std::find_if(instructions().begin(), instructions().end(),
        [&words](const Instruction& instruction) { return instruction.name == words.front(); });
    if (found == instructions().end()) {
        throw ScriptError(tr("there is no instruction \"%1\"").arg(name));
    }
    const Words arguments(words.begin() + 1, words.end());
    if (arguments.size() < found->min_arguments || arguments.size() > found->max_arguments) {
        throw ScriptError(
            tr("\"%1\" has %2 arguments")
                .arg(name, arguments.size() < found->min_arguments ? tr("too few") : tr("too many")));
    }
    (this->*found->carry_out)(arguments);
}

void Batch::report_failure(const std::string& where, const std::string& text)
{
    m_out << std::flush;
    m_error << where << ": " << text << std::endl;
    error_log().log_message(where + ": " + text);
}

void Batch::open(const Words& words)
{
    log_opened(open_terrain(words[0]), words[0]);
}

void Batch::smooth(const Words& words)
{
    execute<SmoothCommand>(count_of(words[0]));
}

void Batch::fill_sinks(const Words&)
{
    execute<FillSinksCommand>();
}

void Batch::clamp(const Words& words)
{
    execute<ClampCommand>(number_of(words[0]), number_of(words[1]));
}

void Batch::scale(const Words& words)
{
    execute<ScaleCommand>(number_of(words[0]));
}

void Batch::crop(const Words& words)
{
    execute<CropCommand>(
        CellRange{place_of(words[0]), place_of(words[1]), place_of(words[2]), place_of(words[3])});
}

void Batch::resample(const Words& words)
{
    execute<ResampleCommand>(
        number_of(words[0]), words.size() > 1 ? resampling_of(words[1]) : Resampling::Bilinear);
}

void Batch::triangulate(const Words& words)
{
    execute<TriangulateCommand>(number_of(words[0]));
}

void Batch::clean_up(const Words&)
{
    execute<CleanUpCommand>();
}

void Batch::raise(const Words& words)
{
    execute<BrushCommand>(brush_of(Brush::Direction::Raise, words), path_of(words));
}

void Batch::lower(const Words& words)
{
    execute<BrushCommand>(brush_of(Brush::Direction::Lower, words), path_of(words));
}

void Batch::flatten(const Words& words)
{
    if (words.size() % 2 == 0) {
        throw ScriptError(tr("the last corner has no row"));
    }
    FlattenCommand::Polygon polygon;
    for (std::size_t i = 1; i < words.size(); i += 2) {
        polygon.emplace_back(number_of(words[i]), number_of(words[i + 1]));
    }
    const auto height = words[0] == "mean" ? std::nullopt : std::make_optional(number_of(words[0]));
    execute<FlattenCommand>(polygon, height);
}

void Batch::undo(const Words& words)
{
    const auto available = [](const TerrainDocument& edited) { return edited.document_history().undoSize(); };
    repeat(words, tr("undone"), available, &housekeeping::CommandManager::undo);
}

void Batch::redo(const Words& words)
{
    const auto available = [](const TerrainDocument& edited) { return edited.document_history().redoSize(); };
    repeat(words, tr("redone"), available, &housekeeping::CommandManager::redo);
}

void Batch::info(const Words&)
{
    m_out << raster_report(document());
}

void Batch::write_export(const Words& words)
{
    const std::optional<ExportFormat> format = export_format(words[0]);
    if (!format) {
        throw ScriptError(unknown_export_format());
    }
    const Raster& raster = document().terrain().raster();
    double interval = 0;
    if (format == ExportFormat::Contours) {
        interval = words.size() > 1 ? number_of(words[1]) : usual_interval(raster);
    } else if (words.size() > 1) {
        throw ScriptError(tr("only contour lines have an interval"));
    }
    if (format == ExportFormat::Contours && interval <= 0) {
        throw ScriptError(tr("the interval between contour lines must be above 0"));
    }
    export_terrain(document().terrain(), words[0], interval);
    log_exported(words[0]);
}

TerrainDocument& Batch::document() const
{
    auto& manager = housekeeping::DocumentManager::instance();
    if (manager.num_documents() == 0) {
        throw ScriptError(tr("no raster is open"));
    }
    return dynamic_cast<TerrainDocument&>(manager.current_document());
}

/// Runs a new command on the current document.
template <class Command, class... Arguments>
void Batch::execute(Arguments... arguments)
{
    const auto sp_command = boost::make_shared<Command>(document().id(), arguments...);
    sp_command->setProgress(&m_progress);
    m_reporter.reset();
    housekeeping::CommandManager::instance().insert(sp_command, false);
    check_last_run();
}

/// Goes back or forward in the history, as often as the arguments say or as there is something left.
template <typename Steps, typename Step> // lupdate takes "class Step" for the class that the texts belong to
void Batch::repeat(const Words& words, const QString& verb, Steps available, Step step)
{
    const int wanted = words.empty() ? 1 : count_of(words[0]);
    const TerrainDocument& edited = document();
    int done = 0;
    for (; done < wanted && available(edited) > 0 && !interrupted(); ++done) {
        m_reporter.reset();
        (housekeeping::CommandManager::instance().*step)(edited.id());
        check_last_run();
    }
    if (done < wanted) {
        m_out << tr("%1 %2 of %3").arg(verb, QString::number(done), QString::number(wanted)).toStdString()
              << '\n';
    }
}

void Batch::check_last_run() const
{
    if (s_fatal_error) {
        throw ScriptError(tr("a fatal error has ended the batch; see the error log"));
    }
    if (m_reporter.failed()) {
        throw ScriptError(
            m_reporter.failure().empty() ? tr("cancelled") : QString::fromStdString(m_reporter.failure()));
    }
}

} // namespace terrain

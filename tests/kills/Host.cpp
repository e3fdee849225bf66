#include "Host.h"

#include "Notes.h"
#include "support/Fakes.h"

#include <pkBase/pkDestructor.h>
#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/ErrorProtocolOutput.h>
#include <tarqa/housekeeping/RecentDocumentsQueue.h>
#include <tarqa/utilities/TemporaryDirectory.h>
#include <tarqa/utilities/Url.h>

#include <QtCore/QSemaphore>
#include <QtCore/QSettings>
#include <QtGui/QColor>

#include <boost/make_shared.hpp>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <memory>
#include <thread>

#include <unistd.h>

namespace kills {

namespace {

namespace fs = std::filesystem;

using tarqa::utilities::TemporaryDirectory;
using namespace tarqa::housekeeping;

const char* const s_ffmpeg = "/program/";
const std::uint32_t s_steps_between_settings = 10;
const int s_most_ahead = 20; ///< steps of the worker thread
const int s_kept_length = 6000; ///< more than a page

// The four kinds of steps, by their number. A command is undone by the step after it.
const std::uint32_t s_kinds = 4;
const std::uint32_t s_stream = 1;
const std::uint32_t s_command = 2;
const std::uint32_t s_undo = 3;

/// Some are long enough to be written in several pieces.
std::string label(bool worker, std::uint32_t number)
{
    const std::uint32_t mixed = (number * 2654435761u) ^ (worker ? 0x5bd1e995u : 0u);
    const std::uint32_t length = number % 16 == 5 ? 7000 + mixed % 4000 : mixed % 300;
    const char letter = static_cast<char>('a' + mixed % 26);
    return (worker ? "worker " : "main ") + std::to_string(number) + ' ' + std::string(length, letter);
}

char wait_for_byte(int from)
{
    char byte = 0;
    while (::read(from, &byte, 1) < 0 && errno == EINTR) { }
    return byte;
}

std::uint32_t number_of(const std::string& log)
{
    const std::size_t underscore = log.rfind('_');
    return static_cast<std::uint32_t>(std::stoul(log.substr(underscore + 1)));
}

/// One of the two threads that log.
class Steps
{
public:
    Steps(bool worker, const NoteWriter& note)
        : m_worker(worker)
        , m_note(note)
        , m_document(DocumentManager::instance().create_document().id())
    { }

    void step(std::uint32_t number)
    {
        const std::string text = label(m_worker, number);
        if (number % s_kinds == s_command) {
            CommandManager::instance().insert(support::make_command(m_document, text), false);
        } else if (number % s_kinds == s_undo) {
            CommandManager::instance().undo(m_document);
        } else if (number % s_kinds == s_stream) {
            ErrorProtocolOutput() << text;
        } else {
            ErrorProtocol::instance().log_message(text);
        }
        m_note(m_worker ? Kind::WorkerEntry : Kind::MainEntry, number);
    }

private:
    bool m_worker;
    const NoteWriter& m_note;
    DocumentId m_document;
};

class Host
{
public:
    explicit Host(const HostOptions& options)
        : m_options(options)
        , m_note(options.to_parent)
    { }

    void live()
    {
        begin();
        read_stored();
        live_in_directory();
        work();
        if (m_options.waits) {
            m_note(Kind::Done);
            while (wait_for_byte(m_options.from_parent) == s_store) {
                store();
            }
        }
        m_note(Kind::OwnDirectory, directory_is_whole() ? 1 : 0);
        m_note(Kind::Ending);
        m_directory.reset();
        pkBase::pkDestructor::run();
        m_note(Kind::Ended);
    }

private:
    void begin()
    {
        if (m_options.claims_first) {
            m_note(Kind::Log, number_of(ErrorProtocol::instance().log_filename()));
        }
        m_note(Kind::Begun);
        if (m_options.gate >= 0) {
            wait_for_byte(m_options.gate);
        }
        static char s_program[] = "host";
        static char* s_argv[] = {s_program, nullptr};
        int argc = 1;
        char** argv = s_argv;
        ApplicationManager::instance(); // logs nothing; the first entry takes the file
        m_note(Kind::Log, number_of(ErrorProtocol::instance().log_filename()));
        ApplicationManager::instance().init(argc, argv, "host", false);
        m_note(Kind::Ready);
    }

    void read_stored()
    {
        const QString path = ApplicationManager::instance().linkToFFMPEG();
        m_number = path.startsWith(s_ffmpeg) ? path.mid(int(qstrlen(s_ffmpeg))).toUInt() : 0;
        m_note(Kind::FfmpegRead, path.isEmpty() || m_number > 0 ? m_number : s_torn);
        m_note(Kind::ColourRead, ApplicationManager::instance().viewHighlightColour().rgb() & 0xffffffu);
        read_recent();
        read_kept();
        if (m_options.first > 0) {
            m_number = m_options.first - 1;
            m_document = m_number;
        }
    }

    void read_recent()
    {
        support::register_data_information("fake");
        RecentDocumentsQueue& queue = RecentDocumentsQueue::instance();
        queue.load();
        std::uint32_t count = 0;
        m_document = s_no_document;
        for (const auto& sp_source : queue) {
            const fs::path file = tarqa::utilities::url_to_filesystem(sp_source->url());
            const auto number = static_cast<std::uint32_t>(std::stoul(file.stem().string()));
            const bool follows = m_document == s_no_document || number == (m_document + 1) % s_documents;
            count = follows && count != s_torn ? count + 1 : s_torn;
            m_document = number;
        }
        m_note(Kind::RecentRead, m_document);
        m_note(Kind::RecentCount, count);
    }

    void read_kept()
    {
        QSettings settings;
        const QString kept(s_kept_length, 'k');
        if (!settings.contains("kept/text") && m_number == 0) {
            settings.setValue("kept/text", kept);
            settings.sync();
        }
        m_note(Kind::KeptRead, settings.value("kept/text").toString() == kept ? 1 : 0);
    }

    void live_in_directory()
    {
        m_directory = std::make_unique<TemporaryDirectory>("vista");
        fs::create_directories(m_directory->path() + "/a/b");
        std::ofstream(m_directory->path() + "/a/b/file") << "content";
        fs::create_directory_symlink(m_options.outside, m_directory->path() + "/outside");
        m_note(Kind::Directory);
    }

    bool directory_is_whole() const
    {
        return fs::exists(m_directory->path() + "/a/b/file") && fs::exists(m_directory->path() + "/outside");
    }

    void work()
    {
        support::register_documents();
        Steps main_steps(false, m_note);
        Steps worker_steps(true, m_note);
        const auto goes_on
            = [this](std::uint32_t number) { return m_options.steps == 0 || number <= m_options.steps; };
        QSemaphore ahead(s_most_ahead);
        std::thread worker([&] {
            for (std::uint32_t number = 1; goes_on(number); ++number) {
                ahead.acquire(); // the main thread has files to write
                worker_steps.step(number);
            }
        });
        for (std::uint32_t number = 1; goes_on(number); ++number) {
            main_steps.step(number);
            ahead.release();
            std::ofstream(m_directory->path() + "/file" + std::to_string(number % 10)) << number;
            if (m_options.stores && number % s_steps_between_settings == 0) {
                store();
            }
        }
        worker.join();
    }

    void store()
    {
        ++m_number;
        ApplicationManager::instance().setLinkToFFMPEG(s_ffmpeg + QString::number(m_number));
        m_note(Kind::Ffmpeg, m_number);
        ApplicationManager::instance().setViewHighlightColour(QColor(QRgb(m_number)));
        m_note(Kind::Colour, m_number);

        m_document = m_document == s_no_document ? 0 : (m_document + 1) % s_documents;
        const auto information = boost::make_shared<support::FakeDataInformation>("fake");
        const std::string file = m_options.documents + '/' + std::to_string(m_document) + ".tif";
        RecentDocumentsQueue& queue = RecentDocumentsQueue::instance();
        queue.load(); // what others have saved
        queue.push(boost::make_shared<DataSource>(tarqa::utilities::filesystem_to_url(file), information));
        queue.save();
        m_note(Kind::Recent, m_document);
    }

    const HostOptions m_options;
    const NoteWriter m_note;
    std::uint32_t m_number = 0; // of the settings
    std::uint32_t m_document = s_no_document;
    std::unique_ptr<TemporaryDirectory> m_directory;
};

} // namespace

void NoteWriter::operator()(Kind kind, std::uint32_t number) const
{
    const Note note{kind, number};
    while (::write(m_to, &note, sizeof note) < 0 && errno == EINTR) { }
}

void live(const HostOptions& options)
{
    try {
        Host(options).live();
    } catch (...) {
        ::_exit(1);
    }
    ::_exit(0);
}

std::string entry_text(bool worker, std::uint32_t number)
{
    const std::string end = " - Succeeded.\n";
    if (number % s_kinds == s_command) {
        return "DO>\t" + label(worker, number) + end;
    }
    if (number % s_kinds == s_undo) {
        return "UNDO>\t" + label(worker, number - 1) + end;
    }
    return label(worker, number) + '\n';
}

} // namespace kills

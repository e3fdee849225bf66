#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QCoreApplication>

#include <string>
#include <vector>

namespace tarqa::housekeeping {

/**
 * What a program still says when it dies of a fatal signal, of std::terminate() or of qFatal(): which
 * commands were running on which documents, of what it died, in which thread, and the stack there. The words
 * go to the standard error stream and to a file beside the error log, which has the log's name with
 * ".lastwords" at its end; the log itself is left as it is. At the next start the program can offer them to
 * the user, see offer().
 *
 * Off until a host asks for it:
 *
 *     ApplicationManager::instance().init(argc, argv, "terrain", true);
 *     LastWords::enable();
 *
 * Whatever is written in the dying program is written with calls that are safe in a signal handler and out of
 * memory that was filled before. The signal then goes where it would have gone without this, so that exit
 * codes and core dumps stay as they are. A program that is killed, or that ends with std::_Exit(), says
 * nothing.
 */
class TQ_HK_EXPORT LastWords
{
    Q_DECLARE_TR_FUNCTIONS(tarqa::housekeeping::LastWords)

public:
    LastWords() = delete;

    /// Begins to listen, for the rest of the program's life. Makes the error log if there is none yet. A
    /// second call changes nothing. Main thread, at start-up; handlers that are installed later come first.
    /// @return false if it cannot be done: the log has no file, or its path is too long
    static bool enable();
    /// Whether enable() has succeeded. Any thread.
    static bool is_enabled();

    /// The file that this program would leave; empty until enable() was called. Any thread.
    static std::string file();

    /// The files that earlier runs of this product left, as full paths, the oldest first; files that are
    /// empty do not count. Any thread; reads the directory of the logs.
    static std::vector<std::string> left_behind();

    /// If an earlier run left last words: asks the user whether to save them, together with the log of that
    /// run, and does so. What was saved or declined is not offered again; it stays under a name with ".old"
    /// at its end. Where no box can be shown, nothing is asked and everything stays as it is. Main thread, in
    /// the main loop, and not while the main window is being shown.
    /// @return true if something was saved
    static bool offer();
};

} // namespace tarqa::housekeeping

#pragma once

#include <pkBase/pkSingleton.h>
#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QObject>
#include <QtWidgets/QMessageBox>

#include <atomic>
#include <exception>
#include <string>

namespace tarqa {
class Exception;
}

namespace tarqa::housekeeping {

/**
 * Reports problems: to the error log always, and to the user where that is possible.
 *
 * Boxes and dialogs appear only on the handler's thread, which is that of the application object, or without
 * one the thread that first asked for it (the main thread), and only in a program with a QApplication and
 * windows; anywhere else the operations log, show nothing and give the answers named below. They block until
 * the user answers.
 *
 * A singleton, destroyed in phase 5 of the ordered destruction.
 */
class TQ_HK_EXPORT ErrorHandler : public QObject
{
    Q_OBJECT

public:
    /// Ends the main loop; called in the thread of the fatal error.
    typedef void (*ExitMainLoop)();

    /// The one object; made at first use.
    static ErrorHandler& instance();
    /// The same, to look at only.
    static const ErrorHandler& const_instance();

    /// Reports an error that ends the program: logs it, shows it over the active window and offers to save
    /// the log (without an active window, or where no box can be shown: writes it to the standard error
    /// stream), then leaves the main loop. Returns; the program ends when the loop is left.
    void fatal_error(const std::string& text);
    void fatal_error(const tarqa::Exception& exception);
    void fatal_error(const std::exception& exception);

    /// What fatal_error() calls last; null for nothing. The program's main loop, or a host without one,
    /// installs it.
    static void exit_main_loop_with(ExitMainLoop function);

    /// Says whether there is somebody who sees boxes and dialogs; true until set. For a program without
    /// windows, in which a box would wait for ever. Main thread, at start-up.
    static void show_dialogs(bool show);
    /// Whether boxes and dialogs appear here and now.
    bool may_show_dialogs() const;

    /// Logs the text and shows it in a warning box. @return the chosen button; QMessageBox::Ok where no box
    /// can be shown, or if the window below it is deleted meanwhile
    QMessageBox::StandardButton message(
        const std::string& title, const std::string& text, QMessageBox::StandardButtons buttons);
    /// Logs the exception and shows its description.
    QMessageBox::StandardButton message(
        const std::string& title, const tarqa::Exception& exception, QMessageBox::StandardButtons buttons);
    QMessageBox::StandardButton message(
        const std::string& title, const std::exception& exception, QMessageBox::StandardButtons buttons);

    /// Logs a line about a command; nothing is shown.
    void report_command(const std::string& text);
    /// Logs the description of an exception; nothing is shown.
    void report_exception(const std::string& text);
    void report_exception(const tarqa::Exception& exception);
    void report_exception(const std::exception& exception);

    /// Asks whether to save the error log, and saves it on Yes. @return true if it was saved
    bool request_save_log_file(const std::string& caption) const;
    /// Asks for a file and copies the error log there, over an existing file. Saving the log onto itself
    /// changes nothing.
    /// @return true if it was saved
    bool save_log_file() const;

private:
    friend class pkBase::pkSingleton<ErrorHandler>;
    friend class TestAccess;
    ErrorHandler();
    ~ErrorHandler() override;
    static pkBase::pkSingleton<ErrorHandler>& get_instance();
    static void destroy_instance();

    QMessageBox::StandardButton show_warning(
        const std::string& title, const std::string& text, QMessageBox::StandardButtons buttons);
    static std::string failure_error_message(const std::string& detail);
    void end_program(const std::string& detail);

    static std::atomic<ExitMainLoop> s_exit_main_loop;
    static std::atomic<bool> s_show_dialogs;

    QMessageBox::StandardButton m_button = QMessageBox::NoButton; // last chosen in a box
};

} // namespace tarqa::housekeeping

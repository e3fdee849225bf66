#include <tarqa/housekeeping/ErrorHandler.h>

#include "ModalBox.h"

#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/utilities/Exception.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QThread>
#include <QtWidgets/QApplication>

#include <iostream>
#include <sstream>

namespace tarqa::housekeeping {

namespace {

std::string written(const tarqa::Exception& exception)
{
    std::ostringstream text;
    text << exception;
    return text.str();
}

} // namespace

std::atomic<ErrorHandler::ExitMainLoop> ErrorHandler::s_exit_main_loop{nullptr};
std::atomic<bool> ErrorHandler::s_show_dialogs{true};

ErrorHandler::ErrorHandler()
{
    // It shows dialogs, so it belongs to the main thread even if a worker was the first to need it.
    if (const QCoreApplication* const p_application = QCoreApplication::instance()) {
        moveToThread(p_application->thread());
    }
}

ErrorHandler::~ErrorHandler() = default;

pkBase::pkSingleton<ErrorHandler>& ErrorHandler::get_instance()
{
    static pkBase::pkSingleton<ErrorHandler> s_holder(
        pkBase::pkDestructionPhase(5), &ErrorHandler::destroy_instance);
    return s_holder;
}

ErrorHandler& ErrorHandler::instance()
{
    return get_instance().get();
}

const ErrorHandler& ErrorHandler::const_instance()
{
    return instance();
}

void ErrorHandler::destroy_instance()
{
    get_instance().destroy();
}

void ErrorHandler::exit_main_loop_with(ExitMainLoop function)
{
    s_exit_main_loop = function;
}

void ErrorHandler::show_dialogs(bool show)
{
    s_show_dialogs = show;
}

void ErrorHandler::fatal_error(const std::string& text)
{
    ErrorProtocol::instance().log_fatal_error(text);
    end_program(text + "\n\n\n\n");
}

// The texts of the next two belong to the overload that they stand in, crossed as they look.

void ErrorHandler::fatal_error(const tarqa::Exception& exception)
{
    ErrorProtocol::instance().log_fatal_error(exception);
    end_program(
        QObject::tr("A C++ fatal error has occured : ").toStdString() + '\n' + written(exception) + '\n');
}

void ErrorHandler::fatal_error(const std::exception& exception)
{
    ErrorProtocol::instance().log_fatal_error(exception);
    end_program(QObject::tr("An Exception creating a fatal error has occured : ").toStdString()
        + exception.what() + "\n\n\n\n");
}

std::string ErrorHandler::failure_error_message(const std::string& detail)
{
    return (QObject::tr("Fatal error!  ")
               + QString::fromStdString(pkBase::pkProductInfo::const_instance().product_name())
               + QObject::tr(" has terminated unexpectedly. Please contact Velmor Stade with a bug report.")
               + QObject::tr("A full failure report can be found in the file : "))
               .toStdString()
        + ErrorProtocol::const_instance().log_filename() + QObject::tr("\nDetail: ").toStdString() + detail;
}

void ErrorHandler::end_program(const std::string& detail)
{
    const std::string message = failure_error_message(detail);
    QWidget* const p_window = may_show_dialogs() ? QApplication::activeWindow() : nullptr;
    if (p_window) {
        modal_box::ask(p_window, QMessageBox::Critical, tr("Fatal Error"), QString::fromStdString(message),
            QMessageBox::Ok);
        request_save_log_file(tr("Tarq Fatal Error").toStdString());
    } else {
        std::cerr << message << std::endl;
    }
    if (const ExitMainLoop exit_main_loop = s_exit_main_loop) {
        exit_main_loop();
    }
}

bool ErrorHandler::may_show_dialogs() const
{
    return s_show_dialogs && QThread::currentThread() == thread()
        && qobject_cast<QApplication*>(QCoreApplication::instance());
}

QMessageBox::StandardButton ErrorHandler::show_warning(
    const std::string& title, const std::string& text, QMessageBox::StandardButtons buttons)
{
    if (!may_show_dialogs()) {
        return QMessageBox::Ok;
    }
    const QMessageBox::StandardButton answer = modal_box::ask(QApplication::activeWindow(),
        QMessageBox::Warning, QString::fromStdString(title), QString::fromStdString(text), buttons);
    m_button = answer == QMessageBox::NoButton ? QMessageBox::Ok : answer;
    return m_button;
}

QMessageBox::StandardButton ErrorHandler::message(
    const std::string& title, const std::string& text, QMessageBox::StandardButtons buttons)
{
    ErrorProtocol::instance().log_message(text);
    return show_warning(title, text, buttons);
}

QMessageBox::StandardButton ErrorHandler::message(
    const std::string& title, const tarqa::Exception& exception, QMessageBox::StandardButtons buttons)
{
    ErrorProtocol::instance().log_exception(exception);
    return show_warning(title, std::string(exception.what()) + '\n', buttons);
}

QMessageBox::StandardButton ErrorHandler::message(
    const std::string& title, const std::exception& exception, QMessageBox::StandardButtons buttons)
{
    ErrorProtocol::instance().log_exception(exception);
    return show_warning(title, std::string(exception.what()) + '\n', buttons);
}

void ErrorHandler::report_command(const std::string& text)
{
    ErrorProtocol::instance().log_command(text);
}

void ErrorHandler::report_exception(const std::string& text)
{
    ErrorProtocol::instance().log_message(text);
}

void ErrorHandler::report_exception(const tarqa::Exception& exception)
{
    ErrorProtocol::instance().log_exception(exception);
}

void ErrorHandler::report_exception(const std::exception& exception)
{
    ErrorProtocol::instance().log_exception(exception);
}

bool ErrorHandler::request_save_log_file(const std::string& caption) const
{
    if (!may_show_dialogs()) {
        return false;
    }
    const QMessageBox::StandardButton answer
        = modal_box::ask(QApplication::activeWindow(), QMessageBox::Warning, QString::fromStdString(caption),
            tr("Save error log to file for PKX support"), QMessageBox::Yes | QMessageBox::No);
    return answer == QMessageBox::Yes && save_log_file();
}

bool ErrorHandler::save_log_file() const
{
    if (!may_show_dialogs()) {
        return false;
    }
    const QString target = modal_box::ask_for_file(
        QApplication::activeWindow(), tr("Save Tarq Error Log"), "Tarq_Error.log", tr("Log files (*.log)"));
    if (target.isEmpty()) {
        return false;
    }
    const QString log = QString::fromStdString(ErrorProtocol::const_instance().log_filename());
    if (log.isEmpty()) {
        return false; // nothing to save, and so nothing to delete
    }
    if (QFileInfo(target) == QFileInfo(log)) {
        return true; // deleting the target would delete the log
    }
    QFile::remove(target);
    const qint64 size = QFileInfo(log).size();
    if (!QFile::copy(log, target)) {
        return false;
    }
    if (QFileInfo(target).size() < size) { // the disk was full, which a copy of a small file does not notice
        QFile::remove(target);
        return false;
    }
    return true;
}

} // namespace tarqa::housekeeping

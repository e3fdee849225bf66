#include "LogHooks.h"

#include "OSGLogFileHandler.h"

#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/ErrorProtocol.h>

#include <pkBaseQt/GDALErrorHandler.h>

#include <QtCore/QString>
#include <QtCore/QtGlobal>

// CGAL is headers only and keeps its handlers in inline functions. Only with default visibility are these the
// same in every module of the program.
#pragma GCC visibility push(default)
#include <CGAL/assertions.h>
#pragma GCC visibility pop

#include <string>

namespace tarqa::housekeeping {

namespace {

// --- Qt

std::string qt_text(const QMessageLogContext& context, const QString& message)
{
    if (!context.file) {
        return message.toStdString();
    }
    return QString("%1 (in %2:%3)")
        .arg(message, QString::fromLocal8Bit(context.file), QString::number(context.line))
        .toStdString();
}

void take_qt_message(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    switch (type) {
    case QtCriticalMsg:
        ErrorProtocol::instance().log_message("QtCriticalMsg: " + qt_text(context, message));
        break;
    case QtFatalMsg:
        // Qt aborts when this returns.
        ErrorHandler::instance().fatal_error("QtFatalMsg: " + qt_text(context, message));
        break;
    default:
        break;
    }
}

// --- CGAL

static_assert(CGAL::CONTINUE == 3, "the behaviour that goes on after the report");

void append_line(std::string& text, const char* name, const char* value)
{
    if (value) {
        text += '\n';
        text += name;
        text += value;
    }
}

void log_cgal_message(const char* headline, const char* name, const char* what, const char* expression,
    const char* file, int line)
{
    std::string text = headline;
    append_line(text, name, what);
    append_line(text, "Expr: ", expression);
    append_line(text, "File: ", file);
    append_line(text, "Line: ", std::to_string(line).c_str());
    ErrorProtocol::instance().log_message(text);
}

void take_cgal_error(const char* what, const char* expression, const char* file, int line, const char*)
{
    log_cgal_message("A CGAL runtime error has been trapped", "CGAL error: ", what, expression, file, line);
}

void take_cgal_warning(const char* what, const char* expression, const char* file, int line, const char*)
{
    log_cgal_message(
        "A CGAL runtime warning has been trapped", "CGAL warning: ", what, expression, file, line);
}

// --- GDAL

void take_gdal_message(const std::string& text)
{
    ErrorProtocol::instance().log_message(text);
}

} // namespace

void install_qt_log_hook()
{
    qInstallMessageHandler(&take_qt_message);
}

void remove_qt_log_hook()
{
    qInstallMessageHandler(nullptr);
}

void install_cgal_log_hooks()
{
    CGAL::set_error_behaviour(CGAL::CONTINUE);
    CGAL::set_warning_behaviour(CGAL::CONTINUE);
    CGAL::set_error_handler(&take_cgal_error);
    CGAL::set_warning_handler(&take_cgal_warning);
}

void install_gdal_log_hook()
{
    pkBase::GDALErrorHandler& handler = pkBase::GDALErrorHandler::instance();
    handler.sink(&take_gdal_message);
    handler.install();
}

void install_osg_log_hook()
{
    osg::setNotifyHandler(new OSGLogFileHandler);
}

} // namespace tarqa::housekeeping

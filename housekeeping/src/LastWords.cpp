#include <tarqa/housekeeping/LastWords.h>

#include "DyingProgram.h"
#include "LogFile.h"
#include "ModalBox.h"

#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/ErrorProtocol.h>

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtCore/QSaveFile>
#include <QtWidgets/QApplication>

#include <atomic>

namespace tarqa::housekeeping {

namespace {

const char* const s_suffix = ".lastwords";
const char* const s_offered = ".old"; // follows when the user has been asked

std::atomic<bool> s_enabled{false};

std::string head_of_words(const std::string& log)
{
    const pkBase::pkProductInfo& product = pkBase::pkProductInfo::const_instance();
    return "LAST WORDS of " + product.product_name() + ' ' + product.version() + "\nLog: " + log + '\n';
}

std::string file_of(const std::string& log)
{
    return log + s_suffix;
}

QString text(const std::string& path)
{
    return QString::fromStdString(path);
}

/// Reads the words, and the log of the run they belong to unless a later run has taken its file.
/// @return false if what is there could not be read to its end
bool read_words_and_log(const QString& file, QByteArray& content)
{
    QFile words(file);
    if (!words.open(QIODevice::ReadOnly)) {
        return false;
    }
    content = words.readAll();
    QFile log(file.chopped(static_cast<int>(qstrlen(s_suffix))));
    // Whatever stands under its name is sent to support: only if it is a log.
    const bool belongs = log_file::is_own(log.fileName().toStdString())
        && QFileInfo(log).lastModified() <= QFileInfo(file).lastModified();
    if (belongs && log.open(QIODevice::ReadOnly)) {
        content += log.readAll();
    }
    return words.error() == QFile::NoError && log.error() == QFile::NoError;
}

bool save(const QString& target, const std::vector<std::string>& files)
{
    if (QFileInfo(target).isSymLink()) {
        QFile::remove(target); // as the log's copy does: what the link leads to is not what was chosen
    }
    QSaveFile out(target);
    if (!out.open(QIODevice::WriteOnly)) {
        return false;
    }
    out.setPermissions(QFile::ReadOwner | QFile::WriteOwner); // as the log has them
    for (const std::string& file : files) {
        QByteArray content;
        if (!read_words_and_log(text(file), content) || out.write(content) != content.size()) {
            return false; // they stay, and are offered again
        }
    }
    return out.flush() && out.commit(); // which does not look whether its own flush succeeds
}

/// They are not offered again, but stay until the next run with the same log dies.
void put_aside(const std::vector<std::string>& files)
{
    for (const std::string& file : files) {
        QFile::remove(text(file) + s_offered);
        QFile::rename(text(file), text(file) + s_offered);
    }
}

} // namespace

bool LastWords::enable()
{
    if (s_enabled) {
        return true;
    }
    const std::string& log = ErrorProtocol::instance().log_filename();
    if (log.empty() || !dying_program::listen(file_of(log), head_of_words(log))) {
        return false;
    }
    s_enabled = true;
    return true;
}

bool LastWords::is_enabled()
{
    return s_enabled.load(std::memory_order_relaxed);
}

std::string LastWords::file()
{
    return s_enabled ? file_of(ErrorProtocol::instance().log_filename()) : std::string();
}

std::vector<std::string> LastWords::left_behind()
{
    if (ErrorProtocol::instance().log_filename().empty()) {
        return {};
    }
    const QFileInfo log(text(ErrorProtocol::instance().log_filename()));
    const QString product = text(pkBase::pkProductInfo::const_instance().product_name());
    const QRegularExpression name(QRegularExpression::anchoredPattern(
        QRegularExpression::escape(product) + "_[0-9]+\\.log" + QRegularExpression::escape(s_suffix)));
    std::vector<std::string> found;
    const QFileInfoList files = log.dir().entryInfoList(
        QDir::Files | QDir::NoSymLinks | QDir::Readable, QDir::Time | QDir::Reversed);
    for (const QFileInfo& file : files) {
        if (file.size() > 0 && log_file::is_own(file.absoluteFilePath().toStdString())
            && name.match(file.fileName()).hasMatch()) {
            found.push_back(file.absoluteFilePath().toStdString());
        }
    }
    return found;
}

bool LastWords::offer()
{
    const std::vector<std::string> files = left_behind();
    if (files.empty() || !ErrorHandler::instance().may_show_dialogs()) {
        return false;
    }
    QWidget* const p_window = QApplication::activeWindow();
    const QString title = tr("The program ended unexpectedly");
    const QMessageBox::StandardButton answer = modal_box::ask(p_window, QMessageBox::Warning, title,
        tr("When it ran the last time, the program wrote down what it was doing when it ended. Save this and "
           "the error log of that time to a file for support?"),
        QMessageBox::Yes | QMessageBox::No);
    if (answer == QMessageBox::No) {
        put_aside(files);
    }
    if (answer != QMessageBox::Yes) {
        return false;
    }
    const QString target = modal_box::ask_for_file(
        QApplication::activeWindow(), title, "Tarq_Error.log", tr("Log files (*.log)"));
    if (target.isEmpty()) {
        return false;
    }
    if (!save(target, files)) {
        ErrorHandler::instance().message(
            tr("Error").toStdString(), tr("%1 cannot be written").arg(target).toStdString(), QMessageBox::Ok);
        return false;
    }
    put_aside(files);
    return true;
}

} // namespace tarqa::housekeeping

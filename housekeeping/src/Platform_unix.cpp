#include "Platform.h"

#include "LogFile.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QStandardPaths>
#include <QtCore/QtGlobal>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarqa::housekeeping {

namespace {

/// Deletes the lock of a settings file whose maker was killed before it could write its name into it: Qt
/// would wait half a minute for that one. A living maker holds a lock on it, but for the very moment in which
/// it makes it; then two that store at once may each lose what the other stores, and the file is whole all
/// the same.
void remove_nameless_lock(const QByteArray& lock)
{
    const int descriptor = ::open(lock.constData(), O_RDWR | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        return;
    }
    struct stat status = {};
    const bool nameless = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_size == 0
        && status.st_uid == ::geteuid();
    if (nameless && ::flock(descriptor, LOCK_EX | LOCK_NB) == 0) {
        ::unlink(lock.constData());
    }
    ::close(descriptor);
}

} // namespace

/// The system has data of its own, without which no reference system could be looked up.
bool use_data_folder(const QString& folder, const QString& file)
{
    return QFile::exists(folder + file);
}

QString settings_file()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + '/'
        + QCoreApplication::organizationName() + '/' + QCoreApplication::applicationName() + ".conf";
}

void make_settings_directory(const QString& file)
{
    remove_nameless_lock(QFile::encodeName(file + ".lock"));
    log_file::make_directory(file.left(file.lastIndexOf('/') + 1).toStdString());
}

void make_settings_file(const QString& file)
{
    make_settings_directory(file);
    log_file::create_new(file.toStdString(), std::string());
}

QByteArray as_data_path(const QString& path)
{
    return QFile::encodeName(path);
}

} // namespace tarqa::housekeeping

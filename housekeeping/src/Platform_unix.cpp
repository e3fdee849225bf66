#include "Platform.h"

#include "LogFile.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>
#include <QtCore/QtGlobal>

#include <cstdio>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarqa::housekeeping {

namespace {

/// The file itself, where it is behind a link. (Qt writes there too.)
QByteArray target_of(const QString& file)
{
    const QString target = QFileInfo(file).canonicalFilePath();
    return QFile::encodeName(target.isEmpty() ? file : target);
}

QByteArray kept_name(const QByteArray& file)
{
    return file + ".kept";
}

/// Whether both are names of one file, which was not changed then: Qt puts a new one in its place.
bool is_same_file(const QByteArray& file, const QByteArray& other)
{
    struct stat one = {};
    struct stat two = {};
    return ::stat(file.constData(), &one) == 0 && ::lstat(other.constData(), &two) == 0
        && one.st_dev == two.st_dev && one.st_ino == two.st_ino;
}

enum class Wholeness
{
    Whole,
    Cut, ///< the end is missing
    Unknown ///< it cannot be read
};

Wholeness wholeness(const QByteArray& name, bool holds_values)
{
    struct stat status = {};
    if (::stat(name.constData(), &status) == 0 && status.st_size == 0) {
        return holds_values ? Wholeness::Cut : Wholeness::Whole;
    }
    QFile file(QFile::decodeName(name));
    if (!file.open(QIODevice::ReadOnly)) {
        return Wholeness::Unknown;
    }
    const QByteArray content = file.readAll();
    if (file.error() != QFile::NoError) {
        return Wholeness::Unknown;
    }
    return content.endsWith('\n') ? Wholeness::Whole : Wholeness::Cut;
}

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

QString settings_file(const QString& organization, const QString& application)
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + '/' + organization + '/'
        + application + ".conf";
}

bool keep_settings_file(const QString& file)
{
    const QByteArray name = target_of(file);
    return ::link(name.constData(), kept_name(name).constData()) == 0;
}

bool end_of_settings_change(const QString& file, bool was_kept, bool holds_values)
{
    const QByteArray name = target_of(file);
    const QByteArray kept = kept_name(name);
    const Wholeness found = is_same_file(name, kept) ? Wholeness::Whole : wholeness(name, holds_values);
    if (found == Wholeness::Cut && was_kept) {
        ::rename(kept.constData(), name.constData());
    } else if (found == Wholeness::Whole) {
        ::unlink(kept.constData());
    }
    return found == Wholeness::Whole; // what is unknown now is looked at before the next change
}

void mend_settings_file(const QString& file)
{
    const QByteArray name = target_of(file);
    const QByteArray kept = kept_name(name);
    struct stat status = {};
    if (::lstat(kept.constData(), &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == ::geteuid()) {
        end_of_settings_change(file, true, true);
    }
}

void make_settings_directory(const QString& file)
{
    remove_nameless_lock(QFile::encodeName(file + ".lock"));
    mend_settings_file(file);
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

#include "io/NewFile.h"

#include "ErrorCode.h"
#include "io/GdalMessages.h"

#include <tarqa/housekeeping/InvalidPath.h>

#include <QtCore/QFileInfo>
#include <QtCore/QObject>
#include <QtCore/QUuid>

#include <algorithm>
#include <cctype>
#include <vector>

namespace terrain {

namespace fs = std::filesystem;

namespace {

const char* const s_source = "terrain/io/NewFile";

std::string lower_extension(const fs::path& path)
{
    std::string extension = path.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
        [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

/// What GDAL reads and writes along with a file.
std::vector<std::string> companions(const fs::path& path)
{
    std::vector<std::string> list;
    for (const char* const ending : {".aux.xml", ".ovr", ".msk"}) {
        list.push_back(path.string() + ending);
    }
    if (lower_extension(path) == ".asc") {
        list.push_back(fs::path(path).replace_extension(".prj").string());
    }
    if (lower_extension(path) == ".gpkg") { // a database that was not closed
        for (const char* const ending : {"-journal", "-wal", "-shm"}) {
            list.push_back(path.string() + ending);
        }
    }
    return list;
}

} // namespace

NewFile::NewFile(const std::string& path)
    : m_path(path)
    , m_target(path)
{
    check();
    // Not made from the file's name, which may be as long as the system allows.
    const std::string name = QUuid::createUuid().toString(QUuid::Id128).toStdString() + ".part";
    m_temporary = (m_target.parent_path() / (name + m_target.extension().string())).string();
}

NewFile::~NewFile()
{
    std::error_code ignored;
    fs::remove(m_temporary, ignored);
    for (const std::string& companion : companions(m_temporary)) {
        fs::remove(companion, ignored);
    }
}

void NewFile::check()
{
    std::error_code error;
    if (fs::is_symlink(m_target, error)) {
        m_target = fs::weakly_canonical(m_path, error);
        if (error) {
            fail(QString::fromStdString(error.message()), s_source, __LINE__);
        }
    }
    const fs::file_status status = fs::status(m_target, error);
    if (status.type() == fs::file_type::none) { // the name is too long, for example
        fail(QString::fromStdString(error.message()), s_source, __LINE__);
    }
    if (fs::is_directory(status)) {
        fail(QObject::tr("it is a directory"), s_source, __LINE__);
    }
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        fail(QObject::tr("it is not a regular file"), s_source, __LINE__);
    }
    if (fs::exists(status) && !QFileInfo(QString::fromStdString(m_target.string())).isWritable()) {
        fail(QObject::tr("it is read-only"), s_source, __LINE__);
    }
    const fs::path directory = m_target.has_parent_path() ? m_target.parent_path() : fs::path(".");
    if (!fs::is_directory(directory, error)) {
        fail(QObject::tr("there is no directory \"%1\"").arg(QString::fromStdString(directory.string())),
            s_source, __LINE__);
    }
}

void NewFile::put_in_place() const
{
    std::error_code error;
    const fs::file_status replaced = fs::status(m_target, error);
    if (fs::exists(replaced)) {
        fs::permissions(m_temporary, replaced.permissions(), error);
    }
    fs::rename(m_temporary, m_target, error);
    if (error) {
        fail(QString::fromStdString(error.message()), s_source, __LINE__);
    }
    const std::vector<std::string> from = companions(m_temporary);
    const std::vector<std::string> to = companions(m_target);
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::error_code ignored;
        if (fs::exists(from[i], ignored)) {
            fs::rename(from[i], to[i], ignored); // in one step: the file is never without it
        } else if (fs::exists(replaced)) {
            fs::remove(to[i], ignored);
        }
    }
}

void NewFile::fail(const QString& reason, const char* source, unsigned int line) const
{
    throw tarqa::housekeeping::InvalidPath(CannotWrite,
        QObject::tr("Cannot write \"%1\": %2").arg(QString::fromStdString(m_path), reason), source, line,
        m_path);
}

void NewFile::fail(const GdalMessages& messages, const char* source, unsigned int line) const
{
    fail(QString::fromStdString(messages.text()), source, line);
}

} // namespace terrain

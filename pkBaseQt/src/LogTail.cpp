#include "LogTail.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <iterator>

namespace pkBase {

namespace {

const int s_head = 512; ///< bytes that tell two files apart: the log's name, version and start time are in it

const int s_longest_skip = 64 * 1024; ///< bytes

/// Goes on to the next line or, where the line is too long for that, to the next character. @return how many
/// bytes that was
qint64 skip_broken_line(QFile& file)
{
    const qint64 start = file.pos();
    const QByteArray rest = file.readLine(s_longest_skip);
    if (!rest.endsWith('\n')) {
        const auto continues = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; };
        file.seek(start + std::distance(rest.begin(), std::find_if_not(rest.begin(), rest.end(), continues)));
    }
    return file.pos() - start;
}

QString translate(const char* text)
{
    return QCoreApplication::translate("pkBase::QLogFileViewer", text);
}

} // namespace

LogTail::LogTail(qint64 longest)
    : m_longest(longest)
{ }

LogTail::~LogTail() = default;

void LogTail::setPath(const QString& path)
{
    m_path = path;
    restart();
}

void LogTail::restart()
{
    m_started = false;
    m_position = 0;
    m_head.clear();
}

LogTail::Piece LogTail::read()
{
    Piece missing;
    missing.change = Change::Missing;
    if (m_path.isEmpty()) {
        missing.error = translate("There is no log file.");
        return missing;
    }
    if (QFileInfo(m_path).isDir()) {
        missing.error = translate("It is a folder.");
        return missing;
    }
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly)) {
        missing.error = file.errorString();
        return missing;
    }
    if (m_started && is_same_file(file) && file.size() - m_position <= m_longest) {
        return file.size() == m_position ? Piece() : read_on(file, Change::Appended, 0);
    }
    restart();
    m_started = true;
    m_decoder.reset(QTextCodec::codecForName("UTF-8")->makeDecoder());
    m_position = std::max<qint64>(0, file.size() - m_longest);
    return read_on(file, Change::Restarted, m_position);
}

bool LogTail::is_same_file(QFile& file) const
{
    return file.size() >= m_position && file.read(m_head.size()) == m_head;
}

LogTail::Piece LogTail::read_on(QFile& file, Change change, qint64 skipped)
{
    Piece piece;
    piece.change = change;
    piece.skipped = skipped;
    if (m_head.size() < s_head) {
        file.seek(0);
        m_head = file.read(s_head);
    }
    file.seek(m_position);
    if (skipped > 0) {
        piece.skipped += skip_broken_line(file);
    }
    const QByteArray bytes = file.readAll();
    m_position = file.pos();
    piece.text = m_decoder->toUnicode(bytes);
    return piece;
}

} // namespace pkBase

#include "LogTail.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <iterator>

namespace pkBase {

namespace {

const int s_sample
    = 512; ///< bytes at the beginning, and before the place that was reached, that tell files apart

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
    m_last.clear();
}

LogTail::Piece LogTail::read()
{
    Piece missing;
    missing.change = Change::Missing;
    if (m_path.isEmpty()) {
        missing.error = tr("There is no log file.");
        return missing;
    }
    const QFileInfo info(m_path);
    if (info.exists() && !info.isFile()) {
        missing.error = tr("It is no file."); // but a folder, or a pipe, which would keep us waiting
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
    if (file.size() < m_position || file.read(m_head.size()) != m_head) {
        return false;
    }
    file.seek(m_position - m_last.size());
    return file.read(m_last.size()) == m_last;
}

LogTail::Piece LogTail::read_on(QFile& file, Change change, qint64 skipped)
{
    Piece piece;
    piece.change = change;
    piece.skipped = skipped;
    if (m_head.size() < s_sample) {
        file.seek(0);
        m_head = file.read(s_sample);
    }
    file.seek(m_position);
    if (skipped > 0) {
        piece.skipped += skip_broken_line(file);
    }
    QByteArray bytes = file.readAll();
    if (bytes.endsWith('\r')) {
        bytes.chop(1); // perhaps half a line end
    }
    m_position += piece.skipped - skipped + bytes.size();
    m_last = (m_last + bytes).right(s_sample);
    piece.text = m_decoder->toUnicode(bytes);
    return piece;
}

} // namespace pkBase

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QCoreApplication>
#include <QtCore/QString>
#include <QtCore/QTextCodec>

#include <memory>

class QFile;

namespace pkBase {

/**
 * Reads a text file that grows, each time from where it ended before. The text is UTF-8; a character that is
 * only half written comes when it is whole. Notices when the file is gone, was cut short, or is another one
 * by now: one with other bytes at its beginning or where the reading had stopped.
 */
class LogTail
{
    Q_DECLARE_TR_FUNCTIONS(pkBase::QLogFileViewer)

public:
    enum class Change
    {
        None,
        Appended, ///< the text continues what was read before
        /// The text is the file from its beginning, or, if that is too far from its end, from later on.
        Restarted,
        Missing ///< there is no such file, or it cannot be read
    };

    struct Piece
    {
        Change change = Change::None;
        QString text;
        qint64 skipped = 0; ///< bytes at the beginning of the file that were not read
        QString error; ///< why it is missing
    };

    /// @param longest how many bytes are read at once; if there are more, the earlier ones are left out
    explicit LogTail(qint64 longest);
    ~LogTail();

    /// Reads @p path from its beginning from now on.
    void setPath(const QString& path);
    /// Lets the next read() begin anew.
    void restart();
    Piece read();

private:
    bool is_same_file(QFile& file) const;
    Piece read_on(QFile& file, Change change, qint64 skipped);

    QString m_path;
    qint64 m_longest;
    bool m_started = false;
    qint64 m_position = 0; // in the file, behind what was read
    QByteArray m_head; // the first bytes of the file
    QByteArray m_last; // the bytes before m_position
    std::unique_ptr<QTextDecoder> m_decoder; // keeps half a character
};

} // namespace pkBase

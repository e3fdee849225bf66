#pragma once

#include <cstdint>
#include <vector>

namespace kills {

/// What a host tells its parent while it lives: one of these, and a number.
enum class Kind : std::uint32_t
{
    Begun, ///< nothing of the framework exists yet
    Log, ///< the number of its log file
    Ready, ///< init() is over
    FfmpegRead, ///< the stored number in the path, 0 if there is none
    ColourRead, ///< the stored number in the colour
    RecentRead, ///< the last one of the recent documents, s_no_document if there is none
    RecentCount, ///< how many there are; s_torn if they are not one after the other
    KeptRead, ///< 1 if the settings that nobody changes are as they were
    Directory, ///< its temporary directory exists
    MainEntry, ///< the last finished one of the main thread
    WorkerEntry, ///< the same of the worker thread
    Ffmpeg, ///< stored
    Colour, ///< stored
    Recent, ///< stored
    OwnDirectory, ///< 1 if its temporary directory is as it was made
    Done, ///< waits to be told to end
    Ending,
    Ended
};

struct Note
{
    Kind kind;
    std::uint32_t number;
};

inline constexpr std::uint32_t s_no_document = 4000000000u;
inline constexpr std::uint32_t s_torn = 4000000001u;

/// The host's end: a note is written in one piece, so it stays whole and known whatever happens to the host
/// then. Any thread.
class NoteWriter
{
public:
    explicit NoteWriter(int to)
        : m_to(to)
    { }
    void operator()(Kind kind, std::uint32_t number = 0) const;

private:
    int m_to; // not owned
};

} // namespace kills

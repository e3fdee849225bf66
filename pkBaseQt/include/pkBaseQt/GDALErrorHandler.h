#pragma once

#include <pkBase/pkSingleton.h>
#include <pkBaseQt/pkBaseQt_export.h>

#include <atomic>
#include <memory>
#include <string>

namespace pkBase {

/**
 * Takes GDAL's messages and hands them, with their class in front, to a function of the program.
 *
 * While it is installed it is GDAL's handler for all threads; a handler that a thread pushes for itself goes
 * first. It never ends the process itself. A singleton, destroyed in phase 5 of the ordered destruction,
 * which gives GDAL the former handler back.
 */
class PKBASEQT_EXPORT GDALErrorHandler
{
public:
    /// Takes one message, in the thread that it comes from; GDAL holds a lock meanwhile, so it must not be
    /// called.
    typedef void (*Sink)(const std::string& text);

    /// The one object; made at first use.
    static GDALErrorHandler& instance();

    /// Where the messages go; null drops them.
    void sink(Sink function) { m_sink = function; }

    /// Makes this GDAL's handler and keeps the former one. A second call does nothing.
    void install();
    /// Gives GDAL the former handler back and forgets it. Does nothing unless one was kept.
    void restore();

    /// restore() on the one instance, if it was ever made.
    static void restore_if_installed();

    /// The text for one message: "CE_None: ", "CE_Debug: ", "CE_Warning: ", "CE_Failure: " or "CE_Fatal: "
    /// and the message.
    /// @param error_class of GDAL's type CPLErr
    /// @param message what GDAL says; null counts as empty
    /// @return empty for any other class
    static std::string text(int error_class, const char* message);

    /// Hands a message to the sink, as GDAL does. Any thread.
    static void hand_over(int error_class, const char* message);

private:
    friend class pkSingleton<GDALErrorHandler>;
    GDALErrorHandler();
    ~GDALErrorHandler();
    static pkSingleton<GDALErrorHandler>& get_instance();
    static void destroy_instance();

    struct Former;

    std::atomic<Sink> m_sink{nullptr};
    std::unique_ptr<Former> m_former; // null unless installed
};

} // namespace pkBase

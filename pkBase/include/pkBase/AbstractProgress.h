#pragma once

#include <pkBase/pkBase_export.h>

#include <QtCore/QString>

namespace pkBase {

/**
 * Where a long operation reports how far it is: a progress bar, a terminal, a test.
 *
 * The host implements it and owns the object; commands hold a plain pointer to it. Every operation is called
 * in the thread that runs the command, so a sink that draws hands the call over to the main thread itself.
 * One run is open_run(), any number of set_percentage() and set_text(), close_run(); runs are not nested.
 */
class PKBASE_EXPORT AbstractProgress
{
public:
    virtual ~AbstractProgress();

    /// Opens a run. @param start the first value, in per cent
    virtual void open_run(unsigned int start) = 0;
    /// @param percentage 0 to 100; a wrong caller's larger value is passed on as it is
    virtual void set_percentage(unsigned int percentage) = 0;
    /// @param text what is being done now, for the user
    virtual void set_text(const QString& text) = 0;
    /// Ends the run; called once for each open_run(), also after a failure or cancellation.
    virtual void close_run() = 0;
};

} // namespace pkBase

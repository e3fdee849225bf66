#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

namespace tarqa::housekeeping {

/// Something that can be run once or more, in the calling thread.
class TQ_HK_EXPORT Runnable
{
public:
    /// @param redo whether the run repeats something that was undone
    virtual void run(bool redo) = 0;
    virtual ~Runnable();
};

} // namespace tarqa::housekeeping

#pragma once

#include <tarqa/housekeeping/Identifier.h>
#include <tarqa/housekeeping/tq_hk_export.h>

namespace tarqa::housekeeping {

/// Names a command; handed out by the CommandManager, or built from a number. A plain value; see
/// Identifier.
class TQ_HK_EXPORT CommandId : public Identifier<CommandId>
{
private:
    friend class Identifier<CommandId>;
    explicit CommandId(unsigned long long id)
        : Identifier<CommandId>(id)
    { }
};

} // namespace tarqa::housekeeping

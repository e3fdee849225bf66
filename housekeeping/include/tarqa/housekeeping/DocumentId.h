#pragma once

#include <tarqa/housekeeping/Identifier.h>
#include <tarqa/housekeeping/tq_hk_export.h>

namespace tarqa::housekeeping {

/// Names a document; handed out by the DocumentManager, or built from a number. A plain value; see
/// Identifier.
class TQ_HK_EXPORT DocumentId : public Identifier<DocumentId>
{
private:
    friend class Identifier<DocumentId>;
    explicit DocumentId(unsigned long long id)
        : Identifier<DocumentId>(id)
    { }
};

} // namespace tarqa::housekeeping

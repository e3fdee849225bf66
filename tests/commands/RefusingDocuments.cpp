#include "commands/RefusingDocuments.h"

#include <tarqa/housekeeping/DocumentManager.h>

#include <dlfcn.h>

namespace {

bool s_refuses = false;
int s_refused = 0;
int s_cleared = 0;

} // namespace

namespace tarqa::housekeeping {

/// Stands before the library's, and calls it unless documents refuse.
bool DocumentManager::document_busy(const DocumentId& id, bool busy)
{
    if (s_refuses) {
        ++(busy ? s_refused : s_cleared);
        return !busy;
    }
    typedef bool (*Function)(DocumentManager*, const DocumentId&, bool);
    static const Function s_p_real = reinterpret_cast<Function>(
        dlsym(RTLD_NEXT, "_ZN5tarqa12housekeeping15DocumentManager13document_busyERKNS0_10DocumentIdEb"));
    return s_p_real(this, id, busy);
}

} // namespace tarqa::housekeeping

namespace support {

RefusingDocuments::RefusingDocuments()
{
    s_refuses = true;
    s_refused = 0;
    s_cleared = 0;
}

RefusingDocuments::~RefusingDocuments()
{
    s_refuses = false;
}

int RefusingDocuments::refused() const
{
    return s_refused;
}

int RefusingDocuments::cleared() const
{
    return s_cleared;
}

} // namespace support

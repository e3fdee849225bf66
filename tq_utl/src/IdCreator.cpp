#include <tarqa/utilities/IdCreator.h>

namespace tarqa::utilities {

IdCreator::~IdCreator() = default;

unsigned long long IdCreator::createNextId()
{
    // Only the number itself has to be unique; nothing else is published with it.
    return m_last.fetch_add(1, std::memory_order_relaxed) + 1;
}

} // namespace tarqa::utilities

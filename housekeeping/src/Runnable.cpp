#include <tarqa/housekeeping/Runnable.h>

namespace tarqa::housekeeping {

Runnable::~Runnable() = default;

} // namespace tarqa::housekeeping

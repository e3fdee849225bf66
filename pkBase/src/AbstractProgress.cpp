#include <pkBase/AbstractProgress.h>

namespace pkBase {

AbstractProgress::~AbstractProgress() = default;

} // namespace pkBase

#include <tarqa/housekeeping/HousekeepingException.h>

namespace tarqa {

template class ExceptionTemplate<Exception, housekeeping::HousekeepingTag>;
template class ExceptionTemplate<housekeeping::HousekeepingException, housekeeping::HousekeepingExceptionTag>;

} // namespace tarqa

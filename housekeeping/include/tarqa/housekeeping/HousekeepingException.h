#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>
#include <tarqa/utilities/ExceptionTemplate.h>

namespace tarqa::housekeeping {

/// Tells HousekeepingException from the other exception types; never instantiated.
struct TQ_HK_EXPORT HousekeepingTag
{ };
/// Tells the exceptions that derive from HousekeepingException from it; never instantiated.
struct TQ_HK_EXPORT HousekeepingExceptionTag
{ };

/**
 * The framework's own failures: what callers must handle. The codes that the framework throws are 2 (an
 * unknown error in a command), 1014 (no such document), 1028 (a command was cancelled) and 7006 (a document
 * without a model, a composite command that was broken off). A plain value, as tarqa::Exception.
 */
typedef ExceptionTemplate<Exception, HousekeepingTag> HousekeepingException;

} // namespace tarqa::housekeeping

namespace tarqa {

// One copy, in the library: a type that every module made for itself might not be caught across modules.
extern template class TQ_HK_EXPORT ExceptionTemplate<Exception, housekeeping::HousekeepingTag>;
extern template class TQ_HK_EXPORT
    ExceptionTemplate<housekeeping::HousekeepingException, housekeeping::HousekeepingExceptionTag>;

} // namespace tarqa

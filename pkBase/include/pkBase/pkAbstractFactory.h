#pragma once

#include <pkBase/pkBase_export.h>

namespace pkBase {

/**
 * The common base of all abstract factories. It has no behaviour of its own: copying never registers anything
 * and destruction unregisters nothing. Factories are objects at namespace scope, which nobody deletes; see
 * NamedFactory of the framework for threads.
 */
class PKBASE_EXPORT pkAbstractFactory
{
public:
    pkAbstractFactory(const pkAbstractFactory&);
    pkAbstractFactory& operator=(const pkAbstractFactory&);
    virtual ~pkAbstractFactory();

protected:
    pkAbstractFactory();
};

} // namespace pkBase

#include <pkBase/pkAbstractFactory.h>

namespace pkBase {

pkAbstractFactory::pkAbstractFactory() = default;
pkAbstractFactory::pkAbstractFactory(const pkAbstractFactory&) = default;
pkAbstractFactory& pkAbstractFactory::operator=(const pkAbstractFactory&) = default;
pkAbstractFactory::~pkAbstractFactory() = default;

} // namespace pkBase

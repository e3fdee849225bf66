#pragma once

#include <tarqa/housekeeping/NamedFactory.h>
#include <tarqa/housekeeping/tq_hk_export.h>

namespace tarqa::housekeeping {

class AbstractDocument;
class AbstractDocumentFactory;

} // namespace tarqa::housekeeping

namespace tarqa::housekeeping {

// One registry, in the library, whichever module asks.
extern template class TQ_HK_EXPORT NamedFactory<AbstractDocument, AbstractDocumentFactory>;

} // namespace tarqa::housekeeping

namespace tarqa::housekeeping {

/// Makes the documents; the document manager asks for the default product. The documents belong to it. See
/// NamedFactory for how concrete factories register, from which threads products are made, and what is
/// thrown.
class TQ_HK_EXPORT AbstractDocumentFactory : public NamedFactory<AbstractDocument, AbstractDocumentFactory>
{
public:
    AbstractDocumentFactory(const AbstractDocumentFactory&);
    AbstractDocumentFactory& operator=(const AbstractDocumentFactory&);
    ~AbstractDocumentFactory() override;

    /// The name that the messages quote.
    static const char* factory_name() { return "AbstractDocumentFactory"; }

protected:
    /// Registers the concrete factory, while the program loads.
    /// @param name the product's name
    /// @param is_default whether it becomes the default product
    /// @throws std::runtime_error if the name is taken
    AbstractDocumentFactory(const std::string& name, bool is_default);
};

} // namespace tarqa::housekeeping

#include <tarqa/housekeeping/AbstractState.h>

#include <utility>

namespace tarqa::housekeeping {

AbstractState::AbstractState(AbstractDocument& document, DocumentId id, std::string controller_name)
    : m_document_id(id)
    , m_controller_name(std::move(controller_name))
    , m_owner(document)
{ }

AbstractState::AbstractState(const AbstractState&) = default;
AbstractState::~AbstractState() = default;

} // namespace tarqa::housekeeping

#pragma once

#include <tarqa/housekeeping/DocumentId.h>

#include <string>

namespace tarqa::housekeeping {

class AbstractDocument;

/**
 * What one controller remembers about one document, so that a single controller serves many open documents.
 *
 * Made by the controller when a document is created, held by the document's state map and by whoever keeps a
 * shared pointer. A controller's state class derives from it and adds its own fields.
 *
 * owner() is valid as long as the document is. A controller that keeps a state must not touch it in
 * update_state() with an empty state (the last document is gone then), nor while the controller is destroyed
 * at shutdown: in the usual order of first use, the controller manager before the document manager, documents
 * go before controllers.
 *
 * It has no lock of its own: what a derived state holds is changed under the controller's lock, as the
 * controller's own data.
 */
class TQ_HK_EXPORT AbstractState
{
public:
    /// @param document the document that holds the state @param id its id @param controller_name the owning
    /// controller
    AbstractState(AbstractDocument& document, DocumentId id, std::string controller_name);
    AbstractState(const AbstractState&);
    virtual ~AbstractState();

    /// Valid as long as the document is; see above.
    AbstractDocument& owner() { return m_owner; }
    const AbstractDocument& owner() const { return m_owner; }
    /// The id of the owner.
    const DocumentId& document_id() const { return m_document_id; }
    /// The name of the controller that made the state.
    const std::string& controller_name() const { return m_controller_name; }

private:
    DocumentId m_document_id;
    std::string m_controller_name;
    AbstractDocument& m_owner; // owns this state
};

} // namespace tarqa::housekeeping

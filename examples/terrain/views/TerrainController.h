#pragma once

#include "documents/CellChanges.h"

#include <tarqa/housekeeping/AbstractController.h>
#include <tarqa/housekeeping/AbstractState.h>
#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/DocumentMessage.h>

#include <boost/shared_ptr.hpp>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/**
 * Tells those who draw a document's terrain what has changed in it: once after each run of commands, when the
 * document is free again. Changes of a document that nobody looks at wait until it is the current one.
 * Registered as "TerrainController". Views listen with a TerrainWatch. Main thread.
 */
class TerrainController : public housekeeping::AbstractController
{
    Q_OBJECT

public:
    static const char* const product_name;

    /// What of a document has not been drawn yet.
    class State : public housekeeping::AbstractState
    {
    public:
        using AbstractState::AbstractState;

        CellChanges changes;
    };

    TerrainController();
    ~TerrainController() override;

    /// The controller manager's.
    static TerrainController& instance();

    /// While the views are updated: whose terrain changed, and what of it. Null and nothing at other times.
    housekeeping::DocumentId changed_document() const { return m_changed_document; }
    const CellChanges& changes() const { return m_changes; }

private slots:
    void handle_message(housekeeping::DocumentMessage& message);

private:
    boost::shared_ptr<housekeeping::AbstractState> create_state(
        housekeeping::AbstractDocument& document) override;
    void update_state(boost::shared_ptr<housekeeping::AbstractState> sp_state) override;

    void show_changes();

    boost::shared_ptr<State> m_sp_state; // the current document's
    housekeeping::DocumentId m_changed_document = housekeeping::DocumentId::null();
    CellChanges m_changes;
};

} // namespace terrain

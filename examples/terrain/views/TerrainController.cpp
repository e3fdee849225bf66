#include "views/TerrainController.h"

#include "documents/TerrainModel.h"

#include <tarqa/housekeeping/AbstractControllerFactory.h>
#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/ControllerLocker.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <boost/make_shared.hpp>

#include <utility>

namespace terrain {

const char* const TerrainController::product_name = "TerrainController";

namespace {

class TerrainControllerFactory : public housekeeping::AbstractControllerFactory
{
public:
    TerrainControllerFactory()
        : AbstractControllerFactory(TerrainController::product_name, false)
    { }
    boost::shared_ptr<housekeeping::AbstractController> create_product() override
    {
        return boost::make_shared<TerrainController>();
    }
    housekeeping::AbstractController* create_unmanaged_product() override { return new TerrainController; }
};

const TerrainControllerFactory s_factory; // registers itself

} // namespace

TerrainController::TerrainController()
{
    housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection);
}

TerrainController::~TerrainController() = default;

TerrainController& TerrainController::instance()
{
    return dynamic_cast<TerrainController&>(
        *housekeeping::ControllerManager::instance().controller(product_name));
}

boost::shared_ptr<housekeeping::AbstractState> TerrainController::create_state(
    housekeeping::AbstractDocument& document)
{
    return boost::make_shared<State>(document, document.id(), controller_name());
}

void TerrainController::update_state(boost::shared_ptr<housekeeping::AbstractState> sp_state)
{
    m_sp_state = boost::dynamic_pointer_cast<State>(sp_state);
    show_changes();
}

/// The marks of busy documents nest, so this comes once, however many commands were undone.
void TerrainController::handle_message(housekeeping::DocumentMessage& message)
{
    auto& documents = housekeeping::DocumentManager::instance();
    if (message.doc_change_type() != housekeeping::DocumentMessage::Idle
        || !documents.document_exists(message.id())) {
        return;
    }
    const auto sp_state = boost::dynamic_pointer_cast<State>(
        documents.document_from_id(message.id()).state(controller_name()));
    if (!sp_state) {
        return;
    }
    sp_state->changes.add(TerrainModel::of(message.id()).take_changes());
    if (sp_state == m_sp_state) {
        show_changes();
    }
}

void TerrainController::show_changes()
{
    if (!m_sp_state || !m_sp_state->changes.any()) {
        return;
    }
    struct Forget // also when a view throws
    {
        TerrainController& controller;
        ~Forget()
        {
            controller.m_changed_document = housekeeping::DocumentId::null();
            controller.m_changes = CellChanges();
        }
    };
    const Forget forget{*this};
    m_changed_document = m_sp_state->document_id();
    m_changes = std::exchange(m_sp_state->changes, CellChanges());
    housekeeping::ControllerLocker locker(*this);
    locker.finished();
}

} // namespace terrain

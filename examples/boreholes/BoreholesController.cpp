#include "BoreholesController.h"

#include "AddBorehole.h"
#include "BoreholesDocument.h"
#include "BoreholesModel.h"
#include "DeleteBorehole.h"

#include <tarqa/housekeeping/AbstractControllerFactory.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/ControllerLocker.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <boost/make_shared.hpp>

namespace boreholes {

const char* const BoreholesController::product_name = "BoreholesController";

namespace {

const double s_metres_in_a_foot = 0.3048;

class BoreholesControllerFactory : public housekeeping::AbstractControllerFactory
{
public:
    BoreholesControllerFactory()
        : AbstractControllerFactory(BoreholesController::product_name, false)
    { }
    boost::shared_ptr<housekeeping::AbstractController> create_product() override
    {
        return boost::make_shared<BoreholesController>();
    }
    housekeeping::AbstractController* create_unmanaged_product() override { return new BoreholesController; }
};

const BoreholesControllerFactory s_factory; // registers itself

} // namespace

BoreholesController::BoreholesController()
{
    housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection);
}

BoreholesController& BoreholesController::instance()
{
    return dynamic_cast<BoreholesController&>(
        *housekeeping::ControllerManager::instance().controller(product_name));
}

BoreholesDocument* BoreholesController::document() const
{
    auto& documents = housekeeping::DocumentManager::instance();
    if (documents.current_document_id() == housekeeping::DocumentId::null()) {
        return nullptr;
    }
    return &dynamic_cast<BoreholesDocument&>(documents.current_document());
}

const Boreholes& BoreholesController::boreholes() const
{
    static const Boreholes s_none;
    const BoreholesDocument* const p_document = document();
    return p_document ? p_document->boreholes().boreholes() : s_none;
}

// --- what is selected

std::optional<std::size_t> BoreholesController::selected() const
{
    // Undo may have taken it away.
    const bool exists = m_sp_state && m_sp_state->selected && *m_sp_state->selected < boreholes().size();
    return exists ? m_sp_state->selected : std::nullopt;
}

void BoreholesController::select(std::optional<std::size_t> index)
{
    if (!m_sp_state || m_sp_state->selected == index) {
        return;
    }
    housekeeping::ControllerLocker locker(*this);
    m_sp_state->selected = index;
    locker.finished(); // the views are redrawn when the locker goes
}

// --- commands: without the controller's lock, which other threads may want while they run

void BoreholesController::add(const Borehole& borehole)
{
    if (BoreholesDocument* const p_document = document()) {
        housekeeping::CommandManager::instance().insert(
            boost::make_shared<AddBorehole>(*p_document, borehole), false);
    }
}

void BoreholesController::delete_selected()
{
    if (const auto index = selected()) {
        housekeeping::CommandManager::instance().insert(
            boost::make_shared<DeleteBorehole>(*document(), *index), false);
    }
}

/// A run has ended, whoever began it: this host, or undo and redo, which are the library's.
void BoreholesController::handle_message(housekeeping::DocumentMessage& message)
{
    if (message.doc_change_type() == housekeeping::DocumentMessage::Idle) {
        housekeeping::ControllerLocker locker(*this);
        locker.finished();
    }
}

// --- units

void BoreholesController::unit(Unit unit)
{
    housekeeping::ControllerLocker locker(*this);
    m_unit = unit;
    locker.finished();
}

double BoreholesController::in_unit(double metres) const
{
    return m_unit == Unit::Feet ? metres / s_metres_in_a_foot : metres;
}

double BoreholesController::in_metres(double length) const
{
    return m_unit == Unit::Feet ? length * s_metres_in_a_foot : length;
}

QString BoreholesController::unit_text() const
{
    return m_unit == Unit::Feet ? tr("ft") : tr("m");
}

// --- states

boost::shared_ptr<housekeeping::AbstractState> BoreholesController::create_state(
    housekeeping::AbstractDocument& document)
{
    return boost::make_shared<State>(document, document.id(), controller_name());
}

/// Another document is current, or none.
void BoreholesController::update_state(boost::shared_ptr<housekeeping::AbstractState> sp_state)
{
    m_sp_state = boost::dynamic_pointer_cast<State>(sp_state);
    force_update();
}

} // namespace boreholes

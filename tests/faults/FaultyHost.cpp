#include "faults/FaultyHost.h"

#include "faults/FaultPoints.h"

#include "support/Kept.h"

#include <tarqa/housekeeping/CancelCommandException.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/FailedCommandException.h>
#include <tarqa/housekeeping/HousekeepingException.h>

#include <boost/make_shared.hpp>

#include <algorithm>

namespace throwing_code {

using namespace tarqa::housekeeping;

namespace {

std::string text(bool value)
{
    return value ? "true" : "false";
}

void at(const std::string& place)
{
    fault_points().reached(place);
}

} // namespace

// Documents

bool FaultyModel::empty() const
{
    at("model.empty");
    return FakeModel::empty();
}

void FaultyModel::take_out(const std::string& name)
{
    const auto last = std::find(done.rbegin(), done.rend(), name);
    if (last != done.rend()) {
        done.erase(std::next(last).base());
    }
}

FaultyDocument::FaultyDocument()
{
    const auto sp_model = boost::make_shared<FaultyModel>();
    sp_model->set_parent_document(*this);
    m_model = sp_model;
    at("document constructed");
}

FaultyDocument& FaultyDocument::of(const DocumentId& id)
{
    return dynamic_cast<FaultyDocument&>(DocumentManager::instance().document_from_id(id));
}

void FaultyDocument::set_busy(bool busy)
{
    at("document.set_busy(" + text(busy) + ")");
    FakeDocument::set_busy(busy);
    at("document.set_busy(" + text(busy) + "), done");
}

bool FaultyDocument::is_busy() const
{
    at("document.is_busy");
    return FakeDocument::is_busy();
}

bool FaultyDocument::is_closing() const
{
    at("document.is_closing");
    return FakeDocument::is_closing();
}

bool FaultyDocument::request_close(bool first, bool second)
{
    at("document.request_close");
    return FakeDocument::request_close(first, second);
}

void FaultyDocument::set_modified(bool modified)
{
    at("document.set_modified");
    FakeDocument::set_modified(modified);
}

void FaultyDocument::document_created()
{
    at("document.document_created");
    FakeDocument::document_created();
}

void FaultyDocument::title_changed()
{
    at("document.title_changed");
    FakeDocument::title_changed();
}

FaultyDocumentFactory::FaultyDocumentFactory()
    : AbstractDocumentFactory("faulty document", true)
{ }

boost::shared_ptr<AbstractDocument> FaultyDocumentFactory::create_product()
{
    at("document factory");
    return boost::make_shared<FaultyDocument>();
}

AbstractDocument* FaultyDocumentFactory::create_unmanaged_product()
{
    at("document factory");
    return new FaultyDocument;
}

// Controllers and views

FaultyController::FaultyController()
{
    at("controller constructed");
}

void FaultyController::post_init()
{
    at("controller.post_init");
}

boost::shared_ptr<AbstractState> FaultyController::create_state(AbstractDocument& document)
{
    at("controller.create_state");
    return boost::make_shared<support::FakeState>(document, document.id(), controller_name());
}

void FaultyController::update_state(boost::shared_ptr<AbstractState>)
{
    at("controller.update_state");
    force_update();
}

FaultyControllerFactory::FaultyControllerFactory()
    : AbstractControllerFactory("faulty controller", false)
{ }

boost::shared_ptr<AbstractController> FaultyControllerFactory::create_product()
{
    at("controller factory");
    return boost::make_shared<FaultyController>();
}

AbstractController* FaultyControllerFactory::create_unmanaged_product()
{
    at("controller factory");
    return new FaultyController;
}

FaultyView::FaultyView(const std::string& place, AbstractController& controller)
    : FakeView(place)
{
    on_update = [place] { at(place); };
    register_controller(&controller);
}

FaultyView::~FaultyView()
{
    unregister();
}

// Commands

FaultyCommand::FaultyCommand(DocumentId document_id, const std::string& name)
    : AbstractCommand(document_id, name)
{ }

void FaultyCommand::at(const std::string& step) const
{
    throwing_code::at(name() + "." + step);
}

FaultyModel& FaultyCommand::model() const
{
    return FaultyDocument::of(document_id()).faulty_model();
}

unsigned long long FaultyCommand::size() const
{
    at("size");
    return AbstractCommand::size();
}

void FaultyCommand::rollback()
{
    at("rollback");
    model().take_out(name());
    at("rollback, done");
}

bool FaultyCommand::stackWith(boost::shared_ptr<AbstractCommand>)
{
    at("stackWith");
    return true;
}

void FaultyCommand::remember()
{
    at("remember");
}

void FaultyCommand::do_command()
{
    at("do");
    progress(10);
    model().done.push_back(name());
    at("do, done");
    progress_text("almost there");
    progress(100);
    if (cancels && fault_points().is_running()) {
        throw CancelCommandException(HousekeepingException(1, "by itself", "tests/faults", 1));
    }
    if (fails && fault_points().is_running()) {
        throw FailedCommandException(1, "by itself", "tests/faults", 1);
    }
}

void FaultyCommand::undo_command()
{
    at("undo");
    model().take_out(name());
    at("undo, done");
}

void FaultyCommand::finished(bool)
{
    at("finished");
}

void FaultyProgress::open_run(unsigned int)
{
    at("progress.open");
}

void FaultyProgress::set_percentage(unsigned int percentage)
{
    at("progress.percentage(" + std::to_string(percentage) + ")");
}

void FaultyProgress::set_text(const QString&)
{
    at("progress.text");
}

void FaultyProgress::close_run()
{
    at("progress.close");
}

// Messages

FaultySubscriber::FaultySubscriber()
{
    DocumentMessage::subscribe(this, Qt::AutoConnection);
    DocumentHistoryMsg::subscribe(this, Qt::AutoConnection);
    CommandMessage::subscribe(this, Qt::AutoConnection);
}

void FaultySubscriber::handle_message(housekeeping::DocumentMessage& message)
{
    switch (message.doc_change_type()) {
    case DocumentMessage::Created:
        return at("Created");
    case DocumentMessage::Destroyed:
        return at("Destroyed");
    case DocumentMessage::Busy:
        return at("Busy");
    case DocumentMessage::Idle:
        return at("Idle");
    case DocumentMessage::CurrentChanged:
        return at("CurrentChanged");
    case DocumentMessage::NoChange:
        break;
    }
}

void FaultySubscriber::handle_message(housekeeping::DocumentHistoryMsg&)
{
    at("history message");
}

void FaultySubscriber::handle_message(housekeeping::CommandMessage& message)
{
    at("command message");
    command_types.push_back(message.command_type());
}

void register_faulty_host()
{
    if (AbstractDocumentFactory::products().empty()) {
        support::kept(new FaultyDocumentFactory);
        support::kept(new FaultyControllerFactory);
    }
}

} // namespace throwing_code

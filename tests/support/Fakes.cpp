#include "support/Fakes.h"

#include "support/Kept.h"

#include "support/Controllers.h"

#include <tarqa/housekeeping/CancelCommandException.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/FailedCommandException.h>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <istream>
#include <map>
#include <ostream>
#include <stdexcept>

namespace support {

using namespace tarqa::housekeeping;

namespace {

const char* const s_place = "tests/Fakes";
const unsigned int s_line = 7;
const unsigned int s_code = 42;

const char* text(bool value)
{
    return value ? "true" : "false";
}

std::map<DocumentId, std::string>& labels()
{
    static std::map<DocumentId, std::string> s_labels;
    return s_labels;
}

std::string change_name(DocumentMessage::DocChangeType type)
{
    switch (type) {
    case DocumentMessage::NoChange:
        return "NoChange";
    case DocumentMessage::Created:
        return "Created";
    case DocumentMessage::Destroyed:
        return "Destroyed";
    case DocumentMessage::Busy:
        return "Busy";
    case DocumentMessage::Idle:
        return "Idle";
    case DocumentMessage::CurrentChanged:
        return "CurrentChanged";
    }
    return "DocumentMessage " + std::to_string(type);
}

} // namespace

// Journal

void Journal::add(const std::string& entry)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_entries.push_back(entry);
}

std::vector<std::string> Journal::entries() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_entries;
}

int Journal::count(const std::string& start) const
{
    const std::vector<std::string> all = entries();
    return static_cast<int>(std::count_if(all.begin(), all.end(),
        [&start](const std::string& entry) { return entry.compare(0, start.size(), start) == 0; }));
}

void Journal::clear()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_entries.clear();
}

Journal& journal()
{
    // Leaked, since documents and controllers write into it while singletons are destroyed at exit.
    static Journal* const s_p_journal = new Journal;
    return *s_p_journal;
}

// Models and documents

FakeModel::FakeModel() = default;

void FakeModel::clear()
{
    items = 0;
}

void FakeModel::setupDatabase(const QString& path)
{
    journal().add("model.setupDatabase(" + path.toStdString() + ")");
}

void FakeModel::mergeDatabase(const QString& path)
{
    journal().add("model.mergeDatabase(" + path.toStdString() + ")");
}

FakeModelFactory::FakeModelFactory()
    : AbstractModelFactory("fake model", true)
{ }

boost::shared_ptr<AbstractModel> FakeModelFactory::create_product()
{
    return boost::make_shared<FakeModel>();
}

AbstractModel* FakeModelFactory::create_unmanaged_product()
{
    return new FakeModel;
}

FakeDocument::FakeDocument()
    : m_label(title())
{
    labels()[id()] = m_label;
    m_model = boost::make_shared<FakeModel>();
    m_model->set_parent_document(*this);
}

FakeDocument::~FakeDocument()
{
    journal().add(m_label + ".destroyed");
}

std::string FakeDocument::label(const DocumentId& id)
{
    const auto found = labels().find(id);
    return found == labels().end() ? "?" : found->second;
}

void FakeDocument::set_busy(bool busy)
{
    m_busy = busy;
    journal().add(m_label + ".busy(" + text(busy) + ")");
}

bool FakeDocument::request_close(bool first, bool second)
{
    journal().add(m_label + ".request_close(" + text(first) + ", " + text(second) + ")");
    if (on_request_close) {
        on_request_close();
    }
    return agrees_to_close;
}

void FakeDocument::set_modified(bool modified)
{
    journal().add(m_label + ".modified(" + text(modified) + ")");
}

void FakeDocument::document_created()
{
    journal().add(m_label + ".document_created");
    if (on_created) {
        on_created(*this);
    }
}

void FakeDocument::title_changed()
{
    journal().add(m_label + ".title_changed(" + title() + ")");
}

FakeDocumentFactory::FakeDocumentFactory()
    : AbstractDocumentFactory("fake document", true)
{ }

boost::shared_ptr<AbstractDocument> FakeDocumentFactory::create_product()
{
    if (repeats_first) {
        return kept.front();
    }
    const boost::shared_ptr<AbstractDocument> product(create_unmanaged_product());
    if (keeps_products) {
        kept.push_back(product);
    }
    return product;
}

AbstractDocument* FakeDocumentFactory::create_unmanaged_product()
{
    if (gives_nothing) {
        return nullptr;
    }
    FakeDocument* const p_document = new FakeDocument;
    p_document->on_created = on_created;
    return p_document;
}

FakeDocumentFactory& register_documents()
{
    init_controllers();
    return *new FakeDocumentFactory; // the registry refers to it until the process ends
}

FakeDocument& create_document()
{
    if (AbstractDocumentFactory::products().empty()) {
        register_documents();
    }
    return FakeDocument::of(DocumentManager::instance().create_document());
}

// Controllers and views

FakeController::FakeController(const std::string& label, bool has_states)
    : m_label(label)
    , m_has_states(has_states)
{ }

FakeController::~FakeController()
{
    journal().add(m_label + ".destroyed");
}

void FakeController::post_init()
{
    journal().add(m_label + ".post_init");
    if (on_post_init) {
        on_post_init();
    }
}

boost::shared_ptr<AbstractState> FakeController::create_state(AbstractDocument& document)
{
    journal().add(m_label + ".create_state(" + FakeDocument::label(document.id()) + ")");
    return m_has_states ? boost::make_shared<FakeState>(document, document.id(), m_label)
                        : boost::shared_ptr<FakeState>();
}

void FakeController::update_state(boost::shared_ptr<AbstractState> state)
{
    m_last_state = state;
    journal().add(
        m_label + ".update_state(" + (state ? FakeDocument::label(state->document_id()) : "null") + ")");
}

FakeControllerFactory::FakeControllerFactory(const std::string& name)
    : AbstractControllerFactory(name, false)
    , m_name(name)
{ }

boost::shared_ptr<AbstractController> FakeControllerFactory::create_product()
{
    return boost::shared_ptr<AbstractController>(create_unmanaged_product());
}

AbstractController* FakeControllerFactory::create_unmanaged_product()
{
    journal().add(m_name + ".create");
    if (gives_nothing) {
        return nullptr;
    }
    FakeController* const p_controller = new FakeController(m_name, has_states);
    p_controller->on_post_init = on_post_init;
    return p_controller;
}

FakeControllerFactory& register_controller(const std::string& name)
{
    return kept(new FakeControllerFactory(name));
}

FakeView::FakeView(const std::string& name)
    : m_name(name)
{ }

void FakeView::update()
{
    journal().add(m_name + ".update");
    if (on_update) {
        on_update();
    }
}

// Commands

FakeCommand::FakeCommand(DocumentId document_id, const std::string& name)
    : AbstractCommand(document_id, name)
    , m_label(name)
{ }

void FakeCommand::step(const std::string& entry, const Step& action)
{
    journal().add(m_label + "." + entry);
    if (action) {
        action();
    }
}

void FakeCommand::remember()
{
    step("remember", on_remember);
}

void FakeCommand::do_command()
{
    step("do", on_do);
}

void FakeCommand::undo_command()
{
    step("undo", on_undo);
}

void FakeCommand::rollback()
{
    step("rollback", on_rollback);
}

void FakeCommand::finished(bool succeeded)
{
    step(std::string("finished(") + text(succeeded) + ")", on_finished);
}

bool FakeCommand::stackWith(boost::shared_ptr<AbstractCommand> newer)
{
    step("stackWith(" + newer->name() + ")", nullptr);
    return absorbs && absorbs(*newer);
}

boost::shared_ptr<FakeCommand> make_command(const DocumentId& document_id, const std::string& name)
{
    return boost::make_shared<FakeCommand>(document_id, name);
}

FakeCommand::Step throws_cancel()
{
    return [] { throw CancelCommandException(HousekeepingException(s_code, "cancelled", s_place, s_line)); };
}

FakeCommand::Step throws_failure(const std::string& message)
{
    return [message] { throw FailedCommandException(s_code, message, s_place, s_line); };
}

FakeCommand::Step throws_housekeeping(const std::string& message)
{
    return [message] { throw HousekeepingException(s_code, message, s_place, s_line); };
}

FakeCommand::Step throws_tarqa(const std::string& message)
{
    return [message] { throw tarqa::Exception(s_code, message, s_place, s_line); };
}

FakeCommand::Step throws_std(const std::string& message)
{
    return [message] { throw std::runtime_error(message); };
}

FakeCommand::Step throws_unknown()
{
    return [] { throw 7; };
}

FakeProgress::FakeProgress(const std::string& name)
    : m_name(name)
{ }

void FakeProgress::open_run(unsigned int start)
{
    journal().add(m_name + ".open(" + std::to_string(start) + ")");
}

void FakeProgress::set_percentage(unsigned int percentage)
{
    journal().add(m_name + ".percentage(" + std::to_string(percentage) + ")");
}

void FakeProgress::set_text(const QString& text)
{
    journal().add(m_name + ".text(" + text.toStdString() + ")");
}

void FakeProgress::close_run()
{
    journal().add(m_name + ".close");
}

// Data informations

FakeDataInformation::FakeDataInformation(const std::string& key)
    : AbstractDataInformation(key)
{ }

void FakeDataInformation::info(const QStringList& list, int first)
{
    first_read = first;
    if (fails_to_read) {
        throw std::runtime_error("cannot read");
    }
    settings = list.value(first).toStdString();
}

QStringList FakeDataInformation::info()
{
    return QStringList(QString::fromStdString(settings));
}

std::istream& FakeDataInformation::serialise(std::istream& stream)
{
    return std::getline(stream, settings);
}

std::ostream& FakeDataInformation::serialise(std::ostream& stream) const
{
    return stream << settings << '\n';
}

FakeDataInformationFactory::FakeDataInformationFactory(const std::string& name, bool is_default)
    : AbstractDataInformationFactory(name, is_default)
    , m_name(name)
{ }

boost::shared_ptr<AbstractDataInformation> FakeDataInformationFactory::create_product()
{
    return boost::shared_ptr<AbstractDataInformation>(create_unmanaged_product());
}

AbstractDataInformation* FakeDataInformationFactory::create_unmanaged_product()
{
    FakeDataInformation* const p_information = new FakeDataInformation(m_name);
    p_information->fails_to_read = fails_to_read;
    return p_information;
}

FakeDataInformationFactory& register_data_information(const std::string& name, bool is_default)
{
    return *new FakeDataInformationFactory(
        name, is_default); // the registry refers to it until the process ends
}

// Messages

JournalingReceiver::JournalingReceiver(Qt::ConnectionType type)
{
    DocumentMessage::subscribe(this, type);
    DocumentHistoryMsg::subscribe(this, type);
    CommandMessage::subscribe(this, type);
}

JournalingReceiver::~JournalingReceiver() = default;

void JournalingReceiver::handle_message(housekeeping::DocumentMessage& message)
{
    journal().add(change_name(message.doc_change_type()) + "(" + FakeDocument::label(message.id()) + ")");
    if (on_document) {
        on_document(message);
    }
}

void JournalingReceiver::handle_message(housekeeping::DocumentHistoryMsg& message)
{
    journal().add("DocumentHistoryMsg");
    if (on_history) {
        on_history(message);
    }
}

void JournalingReceiver::handle_message(housekeeping::CommandMessage& message)
{
    journal().add("CommandMessage(" + message.command()->name() + ", "
        + std::to_string(message.command_type()) + (message.isRedoCommand() ? ", redo)" : ")"));
    if (on_command) {
        on_command(message);
    }
}

} // namespace support

// What it costs to open a document, to make it current and to close it, with few and with many documents that
// are open at the same time, all of one file. A program of its own: it registers as many controllers as a
// large host has.

#include "RatioReporter.h"

#include "EmptyHost.h"

#include <tarqa/housekeeping/AbstractController.h>
#include <tarqa/housekeeping/AbstractControllerFactory.h>
#include <tarqa/housekeeping/AbstractDataInformation.h>
#include <tarqa/housekeeping/AbstractState.h>
#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/DocumentMessage.h>
#include <tarqa/housekeeping/RecentDocumentsQueue.h>

#include <boost/make_shared.hpp>

#include <memory>
#include <string>
#include <vector>

namespace housekeeping = tarqa::housekeeping;
using housekeeping::DocumentId;
using housekeeping::DocumentManager;

namespace {

const std::size_t s_controllers = 30; // the library's own ones included
const int s_subscribers = 5;
const char* const s_file = "/data/fields/north/horizon.grid";

class State : public housekeeping::AbstractState
{
public:
    using AbstractState::AbstractState;
    std::string tool = "Pointer";
    bool shown = true;
};

/// Remembers the state of the current document, as controllers do.
class Controller : public housekeeping::AbstractController
{
protected:
    boost::shared_ptr<housekeeping::AbstractState> create_state(
        housekeeping::AbstractDocument& document) override
    {
        return boost::make_shared<State>(document, document.id(), controller_name());
    }
    void update_state(boost::shared_ptr<housekeeping::AbstractState> state) override
    {
        m_state = boost::dynamic_pointer_cast<State>(state);
    }

private:
    boost::shared_ptr<State> m_state;
};

class ControllerFactory : public housekeeping::AbstractControllerFactory
{
public:
    explicit ControllerFactory(const std::string& name)
        : AbstractControllerFactory(name, false)
    { }
    boost::shared_ptr<housekeeping::AbstractController> create_product() override
    {
        return boost::make_shared<Controller>();
    }
    housekeeping::AbstractController* create_unmanaged_product() override { return new Controller; }
};

/// Named as a host names them: "ToolController7".
std::vector<std::unique_ptr<ControllerFactory>> factories()
{
    std::vector<std::unique_ptr<ControllerFactory>> result;
    while (housekeeping::AbstractControllerFactory::products().size() < s_controllers) {
        result.push_back(
            std::make_unique<ControllerFactory>("ToolController" + std::to_string(result.size())));
    }
    return result;
}
const std::vector<std::unique_ptr<ControllerFactory>> s_factories = factories();

class Information : public housekeeping::AbstractDataInformation
{
public:
    Information()
        : AbstractDataInformation("Grid")
    { }
};

class Subscriber : public QObject
{
    Q_OBJECT

public:
    Subscriber() { housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection); }
    int messages() const { return m_messages; }

private slots:
    void handle_message(housekeeping::DocumentMessage&) { ++m_messages; }

private:
    int m_messages = 0;
};

std::vector<DocumentId> open(int count)
{
    std::vector<DocumentId> ids;
    for (int i = 0; i < count; ++i) {
        housekeeping::AbstractDocument& document = DocumentManager::instance().create_document();
        const auto sp_source
            = boost::make_shared<housekeeping::DataSource>(s_file, boost::make_shared<Information>());
        document.datasource(sp_source);
        housekeeping::RecentDocumentsQueue::instance().push(sp_source);
        ids.push_back(document.id());
    }
    return ids;
}

/// An iteration is one document: it is opened, made current and closed, among as many others and an empty
/// one.
void documents(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    const std::string last_title = std::string(s_file) + ' ' + std::to_string(count);
    DocumentManager& manager = DocumentManager::instance();
    const DocumentId empty = empty_host::document_with(0).id();
    const Subscriber subscribers[s_subscribers];
    bool right = housekeeping::AbstractControllerFactory::products().size() == s_controllers;
    benchmark::IterationCount opened = 0;
    while (state.KeepRunningBatch(count)) {
        const std::vector<DocumentId> ids = open(count);
        right = right && manager.document_from_id(ids.back()).title() == last_title;
        for (const DocumentId& id : ids) {
            manager.current_document(id);
        }
        for (const DocumentId& id : ids) {
            manager.destroy_document(id, false, false, false, DocumentId::null());
        }
        right = right && manager.current_document_id() == empty && manager.num_documents() == 1;
        opened += count;
    }
    // Created, made current, Destroyed, and which one is current then.
    const benchmark::IterationCount expected = opened * 4;
    for (const Subscriber& subscriber : subscribers) {
        right = right && subscriber.messages() == expected;
    }
    if (!right) {
        state.SkipWithError("not every document came and went with its title and its messages");
    }
}
BENCHMARK(documents)->Arg(20)->Arg(50)->Arg(100)->Arg(200)->Arg(500);

const Ratio s_growth("documents of one file, 30 controllers: cost of each of 200 / of each of 20",
    "documents/200", "documents/20", 1.5);
const Ratio s_longest("documents of one file, 30 controllers: cost of each of 500 / of each of 20",
    "documents/500", "documents/20");

} // namespace

#include "DocumentBenchmark.moc"

// What the insertion of a command costs, apart from what the command itself does: the same with few and with
// many commands behind it.

#include "RatioReporter.h"
#include "RawLog.h"

#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/AbstractDocumentFactory.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <QtWidgets/QUndoCommand>
#include <QtWidgets/QUndoStack>

#include <boost/make_shared.hpp>

#include <map>

namespace housekeeping = tarqa::housekeeping;

namespace {

class Document : public housekeeping::AbstractDocument
{
public:
    void buildModel() override { AbstractDocument::buildModel(); }
    void set_busy(bool busy) override { m_busy = busy; }
    bool is_busy() const override { return m_busy; }
    bool request_close(bool, bool) override { return true; }
    void set_modified(bool) override { }
    void document_created() override { }
    void title_changed() override { }

private:
    bool m_busy = false;
};

class DocumentFactory : public housekeeping::AbstractDocumentFactory
{
public:
    DocumentFactory()
        : AbstractDocumentFactory("Document", true)
    { }
    boost::shared_ptr<housekeeping::AbstractDocument> create_product() override
    {
        return boost::make_shared<Document>();
    }
    housekeeping::AbstractDocument* create_unmanaged_product() override { return new Document; }
};

const DocumentFactory s_document_factory;

class NoOp : public housekeeping::AbstractCommand
{
public:
    explicit NoOp(const housekeeping::DocumentId& id)
        : AbstractCommand(id, "No operation")
    { }
    void rollback() override { }

protected:
    void remember() override { }
    void do_command() override { }
    void undo_command() override { }
};

/// A document with @p count commands in its history, the same one each time.
housekeeping::AbstractDocument& document_with(unsigned long long count)
{
    static std::map<unsigned long long, housekeeping::AbstractDocument*> s_documents; // owned by the manager
    housekeeping::AbstractDocument*& p_document = s_documents[count];
    if (!p_document) {
        p_document = &housekeeping::DocumentManager::instance().create_document();
        while (p_document->document_history().undoSize() < count) {
            housekeeping::CommandManager::instance().insert(
                boost::make_shared<NoOp>(p_document->id()), false);
        }
    }
    return *p_document;
}

void insert(benchmark::State& state)
{
    const auto count = static_cast<unsigned long long>(state.range(0));
    housekeeping::AbstractDocument& document = document_with(count);
    housekeeping::CommandManager& manager = housekeeping::CommandManager::instance();
    for (auto _ : state) {
        manager.insert(boost::make_shared<NoOp>(document.id()), false);
        document.document_history().removeLastUndo(); // or there would soon be more behind it
    }
    if (document.document_history().undoSize() != count) {
        state.SkipWithError("the history did not keep its size");
    }
}
BENCHMARK(insert)->Arg(10)->Arg(100000);

/// The peer: Qt's own undo stack, and the line in a log that every run of a command leaves.
void undo_stack_push(benchmark::State& state)
{
    QUndoStack stack;
    stack.setUndoLimit(static_cast<int>(state.range(0)));
    const RawLog log;
    const std::string line = "DO>\tNo operation - Succeeded.\n";
    for (auto _ : state) {
        stack.push(new QUndoCommand(QStringLiteral("No operation")));
        log.append(line);
    }
}
BENCHMARK(undo_stack_push)->Arg(10);

const Ratio s_many("insert with 100,000 behind it / with 10", "insert/100000", "insert/10");
const Ratio s_peer("insert / QUndoStack::push and one open-append-close", "insert/10", "undo_stack_push/10");

} // namespace

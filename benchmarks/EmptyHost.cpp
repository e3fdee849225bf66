#include "EmptyHost.h"

#include <tarqa/housekeeping/AbstractDocumentFactory.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <QtWidgets/QUndoCommand>
#include <QtWidgets/QUndoStack>

#include <boost/make_shared.hpp>

#include <map>

namespace empty_host {

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

} // namespace

NoOp::NoOp(const housekeeping::DocumentId& id)
    : AbstractCommand(id, "No operation")
{ }

void NoOp::rollback() { }

void NoOp::remember() { }

void NoOp::do_command() { }

void NoOp::undo_command() { }

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

void fill(QUndoStack& stack, int count)
{
    stack.setUndoLimit(count);
    while (stack.count() < count) {
        stack.push(new QUndoCommand(QStringLiteral("No operation")));
    }
}

void insert_and_forget(benchmark::State& state)
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

} // namespace empty_host

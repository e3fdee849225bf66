// The smallest host: a document of notes, one command that adds a note, and its undo and redo.

#include <pkBase/pkDestructor.h>
#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/AbstractDocumentFactory.h>
#include <tarqa/housekeeping/AbstractModel.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <QtCore/QCoreApplication>

#include <boost/make_shared.hpp>

#include <iostream>
#include <string>
#include <vector>

namespace housekeeping = tarqa::housekeeping;

namespace {

/// The domain data: an ordered list of texts.
class Notes : public housekeeping::AbstractModel
{
public:
    bool empty() const override { return notes.empty(); }
    unsigned long long size() const override { return notes.size(); }
    void clear() override { notes.clear(); }
    const std::string& document_type() const override { return type; }
    void setupDatabase(const QString&) override { } // there is no database behind the notes
    void mergeDatabase(const QString&) override { }
    QString getDatabasePath() override { return QString(); }

    std::vector<std::string> notes;
    const std::string type = "Notes";
};

/// The document: owns the notes, and is what the framework asks about them.
class NotesDocument : public housekeeping::AbstractDocument
{
public:
    NotesDocument()
        : m_notes(boost::make_shared<Notes>())
    {
        m_model = m_notes;
        m_notes->set_parent_document(*this);
    }

    std::vector<std::string>& notes() { return m_notes->notes; }
    bool is_modified() const { return m_modified; }

    void buildModel() override { AbstractDocument::buildModel(); }
    void set_busy(bool busy) override { m_busy = busy; }
    bool is_busy() const override { return m_busy; }
    bool request_close(bool, bool) override { return !m_busy; }
    void set_modified(bool modified) override { m_modified = modified; }
    void document_created() override { }
    void title_changed() override { }

private:
    boost::shared_ptr<Notes> m_notes;
    bool m_busy = false;
    bool m_modified = false;
};

/// Tells the framework how to make a document. The one object below registers it, before main() begins.
class NotesDocumentFactory : public housekeeping::AbstractDocumentFactory
{
public:
    NotesDocumentFactory()
        : AbstractDocumentFactory("Notes", true)
    { }
    boost::shared_ptr<housekeeping::AbstractDocument> create_product() override
    {
        return boost::make_shared<NotesDocument>();
    }
    housekeeping::AbstractDocument* create_unmanaged_product() override { return new NotesDocument; }
};

const NotesDocumentFactory s_notes_document_factory;

//! [command]
/// The command: does, undoes and describes one change.
class AddNote : public housekeeping::AbstractCommand
{
public:
    AddNote(NotesDocument& document, const std::string& note)
        : AbstractCommand(document.id(), "Add note")
        , m_document(document)
        , m_note(note)
        , m_size_before(document.notes().size()) // for an undo without a run
    {
        setDescription(note);
    }

    void rollback() override { m_document.notes().resize(m_size_before); }

protected:
    void remember() override { m_size_before = m_document.notes().size(); }
    void do_command() override { m_document.notes().push_back(m_note); }
    void undo_command() override { m_document.notes().resize(m_size_before); }

private:
    NotesDocument& m_document; // not owned; its history owns this command
    std::string m_note;
    std::size_t m_size_before;
};

/// Prints the notes and says whether they are as many as expected.
bool show(const char* when, NotesDocument& document, std::size_t expected)
{
    std::cout << when << ":";
    for (const std::string& note : document.notes()) {
        std::cout << " [" << note << "]";
    }
    std::cout << std::endl;
    return document.notes().size() == expected;
}

bool run()
{
    auto& document
        = dynamic_cast<NotesDocument&>(housekeeping::DocumentManager::instance().create_document());
    std::cout << document.title() << " of type " << document.document_type() << std::endl;

    housekeeping::CommandManager& commands = housekeeping::CommandManager::instance();
    commands.insert(boost::make_shared<AddNote>(document, "buy a compass"), false);
    commands.insert(boost::make_shared<AddNote>(document, "walk north"), false);
    bool as_expected = show("done", document, 2) && document.is_modified();

    commands.undo(document.id());
    as_expected = show("undone", document, 1) && as_expected;
    commands.redo(document.id());
    //! [command]
    return show("redone", document, 2) && as_expected;
}

} // namespace

int main(int argc, char** argv)
{
    pkBase::pkProductInfo::instance().product_name("Minimal"); // before anything is logged
    const QCoreApplication application(argc, argv);
    housekeeping::ControllerManager::instance().init(); // each document has a state of each controller
    housekeeping::ControllerManager::instance().post_init();
    const bool as_expected = run();
    pkBase::pkDestructor::run(); // the documents and the framework's own objects, in their order
    return as_expected ? 0 : 1;
}

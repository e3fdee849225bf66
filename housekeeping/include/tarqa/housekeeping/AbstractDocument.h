#pragma once

#include <tarqa/housekeeping/AbstractDocumentHistory.h>
#include <tarqa/housekeeping/DocumentHistory.h>
#include <tarqa/housekeeping/DocumentId.h>

#include <QtCore/QString>

#include <boost/shared_ptr.hpp>

#include <map>
#include <string>
#include <vector>

namespace tarqa::utilities {
class TemporaryDirectory;
}

namespace tarqa::housekeeping {

class AbstractModel;
class AbstractState;
class DataSource;

/**
 * One open project or data file: its model, its undo history, one state per controller, where its data came
 * from and is to go, its temporary directories, and the record of the runs that saved its file.
 *
 * The host derives its documents from it and registers a factory for them; DocumentManager makes, owns and
 * destroys them. Content operations forward to the model, which the concrete document sets in its
 * constructor: without one they are logged and do nothing. Main thread, except set_busy(), which the document
 * manager calls in the thread that marks the document or runs a command, set_modified(), which is called in
 * the thread that runs a command, and the undo history, which may be read from any thread.
 */
class TQ_HK_EXPORT AbstractDocument
{
public:
    virtual ~AbstractDocument();

    /// True if the model holds no data; also without a model.
    virtual bool empty() const;
    /// How many items the model holds; 0 without a model.
    virtual unsigned long long size() const;

    /// The kind of document; the model's.
    virtual const std::string& document_type() const;
    /// Removes all data of the model.
    virtual void clear();

    /// Called when the document's content is complete. The base's body, which concrete documents call, trims
    /// the record of runs to 50: the first and the last 49.
    virtual void buildModel() = 0;

    /// The document's own busy flag; set and cleared by the document manager's counting only.
    virtual void set_busy(bool busy) = 0;
    /// Whether the flag is set. Prefer DocumentManager::document_busy(), which any thread may call.
    virtual bool is_busy() const = 0;
    /// Whether a view is drawing the document just now; the base says no.
    virtual bool beingRendered();
    /// Whether set_closing() was called.
    virtual bool is_closing() const;
    /// Marks the document as on its way out; there is no way back.
    virtual void set_closing();
    /// A flag for the host, for the time in which the document's coordinates change; false until set. Nobody
    /// else looks at it.
    virtual bool is_transforming() const;
    /// Sets is_transforming().
    virtual void set_transforming(bool transforming);
    /// Asked before a destruction that needs the document's consent; false refuses. Nobody else looks whether
    /// the document is busy.
    /// @param first the second flag given to DocumentManager::destroy_document(), negated
    /// @param second the third flag
    virtual bool request_close(bool first, bool second) = 0;

    /// Called with true whenever a command is about to run (again) on the document.
    virtual void set_modified(bool modified) = 0;

    /// Sets up the model's database. @param path where; as the model wants it
    virtual void setupDatabase(const QString& path);
    /// Takes another database into the model's. @param path where that is
    virtual void mergeDatabase(const QString& path);
    /// Where the model's database is; empty without a model.
    virtual QString getDatabasePath();

    /// Called once, when the document is registered and current but has no states yet.
    virtual void document_created() = 0;
    /// Called at the end of every change of the title through the data source.
    virtual void title_changed() = 0;

    /// The document's own number, drawn when it was made.
    const DocumentId& id() const { return m_id; }
    /// As shown to the user; UTF-8. See datasource() for where it comes from.
    const std::string& title() const { return m_title; }
    /// The title without directories and last extension, for narrow places.
    std::string short_title() const;

    /// @throws HousekeepingException (7006) if there is no model
    AbstractModel& model() const;
    /// The state of a controller; empty, and logged, if there is none of that name.
    boost::shared_ptr<AbstractState> state(const std::string& controller_name) const;

    /// What was done and undone; part of the document. Its lists and sizes may be read from any thread;
    /// changes are the command manager's.
    AbstractDocumentHistory& document_history() { return m_document_history; }
    const AbstractDocumentHistory& document_history() const { return m_document_history; }

    /// Where the data came from; empty until set.
    boost::shared_ptr<DataSource> datasource() const { return m_datasource; }
    /// Sets where the data came from; the title follows if the source has data information. An empty pointer
    /// is logged and stored.
    void datasource(boost::shared_ptr<DataSource> ds);
    /// Where the data is to go; empty until set.
    boost::shared_ptr<DataSource> dataExport() const { return m_data_export; }
    /// Sets where the data is to go. An empty pointer is logged and stored.
    void dataExport(boost::shared_ptr<DataSource> ds);
    /// True if the vertical axis of the data source is in units of time.
    bool inTime() const;

    /// Whether the document's data comes from a running program beside this one; short_title() then says so.
    /// False until set, except for the first document of a program that was started that way.
    bool linked_to_petrel() const { return m_linked_to_petrel; }
    void linked_to_petrel(bool linked) { m_linked_to_petrel = linked; }

    /// The document's first temporary directory; made now if there is none.
    /// @throws tarqa::Exception if it cannot be made
    boost::shared_ptr<utilities::TemporaryDirectory> work_dir();
    /// Adds a directory, which the document keeps as long as it lives.
    void work_dir(boost::shared_ptr<utilities::TemporaryDirectory> directory);
    /// All temporary directories, the oldest first.
    const std::vector<boost::shared_ptr<utilities::TemporaryDirectory>>& work_directories() const
    {
        return m_work_directories;
    }

    /// Appends a record of the current run and user. @return its description
    std::string add_history();
    /// Appends a record that was read from a file.
    void add_history(const std::string& program, const std::string& version, const std::string& user,
        const std::string& name, const std::string& date);
    /// The records of the runs that saved the file, the oldest first.
    std::vector<DocumentHistory>::const_iterator history_begin() const { return m_history.begin(); }
    /// The end of these.
    std::vector<DocumentHistory>::const_iterator history_end() const { return m_history.end(); }

protected:
    /// Takes a fresh id and the title "Document N", N counting the documents of this process.
    AbstractDocument();
    AbstractDocument(const AbstractDocument&) = delete;
    AbstractDocument& operator=(const AbstractDocument&) = delete;

    /// Set once, in the concrete document's constructor.
    boost::shared_ptr<AbstractModel> m_model;

private:
    friend class DocumentManager;
    friend class TestAccess;

    void create_states();
    void title(const std::string& key);

    static unsigned int m_s_new_document_counter;

    bool m_closing = false;
    bool m_transforming = false;
    AbstractDocumentHistory m_document_history;
    std::string m_title;
    DocumentId m_id = DocumentId::null();
    std::map<std::string, boost::shared_ptr<AbstractState>> m_states;
    boost::shared_ptr<DataSource> m_datasource;
    boost::shared_ptr<DataSource> m_data_export;
    std::vector<boost::shared_ptr<utilities::TemporaryDirectory>> m_work_directories;
    std::vector<DocumentHistory> m_history; // oldest first
    bool m_linked_to_petrel = false;
};

} // namespace tarqa::housekeeping

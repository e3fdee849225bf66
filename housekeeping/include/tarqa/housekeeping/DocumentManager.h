#pragma once

#include <pkBase/pkSingleton.h>
#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/utilities/IdCreator.h>

#include <QtCore/QMutex>
#include <QtCore/QObject>

#include <boost/container/flat_map.hpp>
#include <boost/shared_ptr.hpp>

#include <atomic>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace tarqa::housekeeping {

class AbstractDocument;
class AbstractState;
class CommandMessage;

/**
 * The registry of open documents: makes and destroys them, knows the current one and which are busy, hands
 * every controller the state of the current document, and announces each change with a DocumentMessage.
 *
 * Documents are created, made current and destroyed on the main thread; busy marks come from any thread.
 * Three mutexes guard the registry (creation and destruction only), the busy marks and the set of documents
 * in destruction; no two are held at once, and none while a document's operation or a subscriber runs, except
 * that create_document() holds the registry mutex to its end, its message included: a subscriber of that
 * message may use every operation but create_document(), destroy_document() and cleanupInvalidDocuments(),
 * which destroys. Documents may be looked up by id from any thread; the current document, its state and
 * first_id() belong to the main thread.
 *
 * A singleton, destroyed in phase 5 of the ordered destruction, with the documents that are still open.
 */
class TQ_HK_EXPORT DocumentManager : public QObject, public utilities::IdCreator
{
    Q_OBJECT

public:
    /// The one object; made at first use.
    static DocumentManager& instance();
    /// The same, to look at only.
    static const DocumentManager& const_instance();

    /// A fresh id; every call uses up a number. Any thread.
    DocumentId createId();

    /// Makes a document of the default product, registers it, makes it current, gives it its states, and
    /// sends a message of type Created. The document lives until destroy_document().
    /// @throws std::runtime_error if no document factory is registered; HousekeepingException (1014) if the
    /// factory gives none
    AbstractDocument& create_document();

    /// @throws HousekeepingException (1014), after logging "m_current_document", if there is none
    AbstractDocument& current_document();
    const AbstractDocument& current_document() const;
    /// Makes a document current, refreshes all controllers, and sends CurrentChanged if it was not current
    /// before. An unknown id leaves no document current and sends nothing.
    void current_document(const DocumentId& id);
    /// The null id if there is none.
    DocumentId current_document_id() const;
    /// The ids of all registered documents, ascending; closing ones included.
    std::vector<DocumentId> current_documents() const;
    /// The current document's state for a controller; empty if there is no current document.
    boost::shared_ptr<AbstractState> current_state(const std::string& controller_name) const;

    /// True if the id is registered; closing documents count. Any thread.
    bool document_exists(const DocumentId& id) const;
    /// @throws HousekeepingException (1014, "Document does not exist") if the id is not registered
    AbstractDocument& document_from_id(const DocumentId& id);
    const AbstractDocument& document_from_id(const DocumentId& id) const;
    /// How many documents are registered. Any thread.
    unsigned long long num_documents() const;
    /// The id of the first document of the process; null before.
    DocumentId first_id() const;

    /**
     * Destroys a document, after asking it with request_close(!second, third) unless @p skip_consent is set.
     * Sends Destroyed before it goes and CurrentChanged if a document is current afterwards. Busy marks are
     * not looked at, and stay: only the document can refuse while it is busy.
     * @param id the document to destroy
     * @param skip_consent true to destroy it without asking it
     * @param second handed to the document negated, as its request_close() wants it
     * @param third handed to the document as it is
     * @param next_current the document that becomes current if the destroyed one was; null: the first one in
     * the order of ids
     * @return false if the document refused, and nothing has changed then; true otherwise, also if it is not
     * registered or already being destroyed
     */
    bool destroy_document(
        const DocumentId& id, bool skip_consent, bool second, bool third, DocumentId next_current);

    /// Adds or takes away one busy mark; marks nest. The first and the last one set the document's flag and
    /// send Busy and Idle; a mark that another thread adds while the last one goes may lose the flag. Any
    /// thread; subscribers run in the calling one. @return true, always
    /// @throws HousekeepingException (1014) for an unknown id, after the mark was counted
    bool document_busy(const DocumentId& id, bool busy);
    /// True if the document has a busy mark and is not being destroyed. Any thread.
    bool document_busy(const DocumentId& id) const;
    /// True if any document has a busy mark, one that was destroyed included. Any thread.
    bool documents_busy() const;

    /// @return false if the id is not registered
    bool set_document_as_closing(const DocumentId& id);

public slots:
    /// Destroys the documents that are empty, idle and closing, each after request_close(true, false); while
    /// documents_busy() it tries again from the event loop. The host calls it after it has marked documents
    /// as closing.
    void cleanupInvalidDocuments();

private slots:
    void handle_message(housekeeping::CommandMessage& message);

private:
    friend class pkBase::pkSingleton<DocumentManager>;
    friend class AbstractDocument; // counts the documents of a file, for its title
    friend class TestAccess;
    DocumentManager();
    ~DocumentManager() override;
    static pkBase::pkSingleton<DocumentManager>& get_instance();
    static void destroy_instance();

    typedef std::map<DocumentId, boost::shared_ptr<AbstractDocument>> Registry;

    boost::shared_ptr<AbstractDocument> find(const DocumentId& id) const;
    boost::shared_ptr<AbstractDocument> find_or_throw(const DocumentId& id, const char* caller) const;
    AbstractDocument& look_up(const DocumentId& id, const char* caller) const;
    AbstractDocument& current_or_throw(const char* caller) const;
    void link_first_document(AbstractDocument& document);
    void give_states_of(AbstractDocument* p_document, const char* caller) const;
    void add_busy_mark(const DocumentId& id, const char* caller);
    void remove_busy_mark(const DocumentId& id, const char* caller);
    void drop_document(const DocumentId& id, DocumentId next_current, const char* caller);
    void choose_next_current(const DocumentId& id, DocumentId wanted, const char* caller);
    int documents_of(const std::string& key) const;
    DocumentId first_after(const DocumentId& id) const;
    bool is_invalid(const DocumentId& id) const;

    Registry m_document_registry; // guarded by m_container_mutex
    AbstractDocument* m_current_document = nullptr; // owned by the registry
    DocumentId m_first_id = DocumentId::null();
    mutable QMutex m_registry_mutex; // creation and destruction
    boost::container::flat_map<DocumentId, int> m_busy; // few, and with each command; guarded by m_busy_mutex
    mutable QMutex m_busy_mutex;
    std::set<DocumentId> m_in_destruction; // guarded by m_destruction_mutex
    mutable QMutex m_destruction_mutex;
    mutable std::mutex m_container_mutex; // around one access to the registry's container, never longer
    /// Of all managers' registries; counts the changes. Written under m_container_mutex.
    static std::atomic<unsigned long long> s_registry_version;
};

} // namespace tarqa::housekeeping

#include <tarqa/housekeeping/DocumentManager.h>

#include "Assertion.h"
#include "DocumentUse.h"
#include "GuardedLocker.h"
#include "ReadyMessage.h"

#include <tarqa/housekeeping/AbstractController.h>
#include <tarqa/housekeeping/AbstractControllerFactory.h>
#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/AbstractDocumentFactory.h>
#include <tarqa/housekeeping/AbstractState.h>
#include <tarqa/housekeeping/CommandMessage.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentMessage.h>
#include <tarqa/housekeeping/HousekeepingException.h>
#include <tarqa/utilities/Pointers.h>
#include <tarqa/utilities/Url.h>

#include <QtCore/QTimer>

#include <utility>

namespace tarqa::housekeeping {

namespace {

const char* const s_source = "housekeeping/src/DocumentManager";
constexpr unsigned int s_no_document = 1014;
const char* const s_petrel_variable = "PETREL_PORT";

const GuardedMutex s_registry{"the mutex of the document manager's registry",
    "neither a document's constructor or document_created(), nor a controller, a view or a subscriber of "
    "Created, creates or destroys a document or calls the sweep during create_document()."};

void send(const DocumentId& id, DocumentMessage::DocChangeType type)
{
    const ReadyMessage<DocumentMessage, message_memory::DocumentChange> message;
    message->id(id);
    message->doc_change_type(type);
    message->dispatch();
}

[[noreturn]] void throw_no_document(unsigned int line)
{
    throw HousekeepingException(s_no_document, QObject::tr("Document does not exist"), s_source, line);
}

/// What a thread knows of the documents.
struct ThreadState
{
    /// The document that it looked up last. It is the registered one as long as the registry does not change,
    /// and the next look-up is mostly for the same one.
    AbstractDocument* p_looked_up = nullptr; // owned by the registry
    unsigned long long looked_up_id = 0;
    unsigned long long looked_up_version = 0; // of the registry
    /// Whether it is the thread that creates the documents, which is also the only one that destroys them.
    bool has_documents = false;
    DocumentUse* p_last_use = nullptr;
};
thread_local ThreadState t_state;

/// Takes an id out of a set on every way out of a scope.
class Removal
{
public:
    Removal(std::set<DocumentId>& ids, QMutex& mutex, const DocumentId& id)
        : m_ids(ids)
        , m_mutex(mutex)
        , m_id(id)
    { }
    ~Removal() { now(); }
    Removal(const Removal&) = delete;
    Removal& operator=(const Removal&) = delete;

    void now()
    {
        const QMutexLocker lock(&m_mutex);
        m_ids.erase(m_id);
    }

private:
    std::set<DocumentId>& m_ids;
    QMutex& m_mutex;
    DocumentId m_id;
};

} // namespace

std::atomic<unsigned long long> DocumentManager::s_registry_version{1};

DocumentManager::DocumentManager()
{
    CommandMessage::subscribe(this, Qt::AutoConnection);
}

DocumentManager::~DocumentManager()
{
    ++s_registry_version;
    for (Registry::value_type& entry : m_document_registry) {
        DocumentUse::leave(t_state.p_last_use, entry.second);
    }
}

pkBase::pkSingleton<DocumentManager>& DocumentManager::get_instance()
{
    static pkBase::pkSingleton<DocumentManager> s_holder(
        pkBase::pkDestructionPhase(5), &DocumentManager::destroy_instance);
    return s_holder;
}

DocumentManager& DocumentManager::instance()
{
    return get_instance().get();
}

const DocumentManager& DocumentManager::const_instance()
{
    return instance();
}

void DocumentManager::destroy_instance()
{
    get_instance().destroy();
}

DocumentId DocumentManager::createId()
{
    return DocumentId::build(createNextId());
}

AbstractDocument& DocumentManager::create_document()
{
    t_state.has_documents = true;
    const GuardedLocker lock(&m_registry_mutex, s_registry); // held to the end, the message included
    const boost::shared_ptr<AbstractDocument> sp_ad = AbstractDocumentFactory::create();
    if (!HK_ASSERT(!utilities::null_pointer(sp_ad), "!utilities::null_pointer( sp_ad )")) {
        throw_no_document(__LINE__);
    }
    AbstractDocument& document = *sp_ad;
    bool inserted = false;
    {
        const std::lock_guard<std::mutex> access(m_container_mutex);
        inserted = m_document_registry.insert(std::make_pair(document.id(), sp_ad)).second;
        ++s_registry_version;
    }
    HK_ASSERT(inserted, "inserted");
    m_current_document = &document;
    HK_ASSERT(m_current_document, "m_current_document");
    link_first_document(document);
    document.document_created();
    document.create_states();
    give_states_of(&document, BOOST_CURRENT_FUNCTION);
    send(document.id(), DocumentMessage::Created);
    return document;
}

void DocumentManager::link_first_document(AbstractDocument& document)
{
    if (m_first_id != DocumentId::null()) {
        return;
    }
    if (qEnvironmentVariableIsSet(s_petrel_variable)) {
        document.linked_to_petrel(true);
    }
    m_first_id = document.id();
}

/// Makes every controller show the state that @p p_document, the current one, has for it; without a document,
/// none. Stops when a controller makes another document current, which refreshes them all by itself. Asserts
/// on behalf of @p caller, as all helpers here do.
void DocumentManager::give_states_of(AbstractDocument* p_document, const char* caller) const
{
    for (const std::string& name : AbstractControllerFactory::products()) {
        if (m_current_document != p_document) {
            return;
        }
        const boost::shared_ptr<AbstractController> sp_ac = ControllerManager::instance().controller(name);
        if (HK_ASSERT_IN(!utilities::null_pointer(sp_ac), "!utilities::null_pointer( sp_ac )", caller)) {
            sp_ac->update_associated_state(
                p_document ? p_document->state(name) : boost::shared_ptr<AbstractState>());
        }
    }
}

AbstractDocument& DocumentManager::current_or_throw(const char* caller) const
{
    if (!HK_ASSERT_IN(m_current_document, "m_current_document", caller)) {
        throw_no_document(__LINE__);
    }
    return *m_current_document;
}

AbstractDocument& DocumentManager::current_document()
{
    return current_or_throw(BOOST_CURRENT_FUNCTION);
}

const AbstractDocument& DocumentManager::current_document() const
{
    return current_or_throw(BOOST_CURRENT_FUNCTION);
}

void DocumentManager::current_document(const DocumentId& id)
{
    const bool changes = !m_current_document || m_current_document->id() != id;
    m_current_document = nullptr;
    if (document_exists(id)) {
        m_current_document = find(id).get();
        HK_ASSERT(m_current_document, "m_current_document");
    }
    if (!m_current_document) {
        return;
    }
    give_states_of(m_current_document, BOOST_CURRENT_FUNCTION);
    if (changes && m_current_document) {
        send(m_current_document->id(), DocumentMessage::CurrentChanged);
    }
}

DocumentId DocumentManager::current_document_id() const
{
    return m_current_document ? m_current_document->id() : DocumentId::null();
}

std::vector<DocumentId> DocumentManager::current_documents() const
{
    const std::lock_guard<std::mutex> access(m_container_mutex);
    std::vector<DocumentId> ids;
    ids.reserve(m_document_registry.size());
    for (const Registry::value_type& entry : m_document_registry) {
        ids.push_back(entry.first);
    }
    return ids;
}

boost::shared_ptr<AbstractState> DocumentManager::current_state(const std::string& controller_name) const
{
    return m_current_document ? m_current_document->state(controller_name)
                              : boost::shared_ptr<AbstractState>();
}

bool DocumentManager::document_exists(const DocumentId& id) const
{
    const std::lock_guard<std::mutex> access(m_container_mutex);
    return m_document_registry.count(id) != 0;
}

/// The registered document; empty if the id is not registered.
boost::shared_ptr<AbstractDocument> DocumentManager::find(const DocumentId& id) const
{
    const std::lock_guard<std::mutex> access(m_container_mutex);
    const auto iter = m_document_registry.find(id);
    return iter == m_document_registry.end() ? boost::shared_ptr<AbstractDocument>() : iter->second;
}

boost::shared_ptr<AbstractDocument> DocumentManager::find_or_throw(
    const DocumentId& id, const char* caller) const
{
    const boost::shared_ptr<AbstractDocument> sp_ad = find(id);
    if (sp_ad) {
        return sp_ad;
    }
    if (document_exists(id)) {
        HK_ASSERT_IN(!utilities::null_pointer(sp_ad), "!utilities::null_pointer( sp_ad )", caller);
    }
    throw_no_document(__LINE__);
}

AbstractDocument& DocumentManager::look_up(const DocumentId& id, const char* caller) const
{
    ThreadState& state = t_state;
    // Read before the registry: what is found may be newer than the version, never older.
    const unsigned long long version = s_registry_version;
    if (state.looked_up_version != version || state.looked_up_id != id.getId()) {
        state.p_looked_up = find_or_throw(id, caller).get();
        state.looked_up_version = version;
        state.looked_up_id = id.getId();
    }
    return *state.p_looked_up;
}

AbstractDocument& DocumentManager::document_from_id(const DocumentId& id)
{
    return look_up(id, BOOST_CURRENT_FUNCTION);
}

const AbstractDocument& DocumentManager::document_from_id(const DocumentId& id) const
{
    return look_up(id, BOOST_CURRENT_FUNCTION);
}

/// How many of the registered documents were read from the file that @p key names. Their data sources may
/// change at any time, without telling, so that there is nothing to count in advance.
int DocumentManager::documents_of(const std::string& key) const
{
    const std::string file = utilities::file_from_url(key);
    const std::lock_guard<std::mutex> access(m_container_mutex);
    int count = 0;
    for (const Registry::value_type& entry : m_document_registry) {
        const DataSource* const p_source = entry.second ? entry.second->m_datasource.get() : nullptr;
        if (p_source && (p_source->url() == key || utilities::file_from_url(p_source->url()) == file)) {
            ++count;
        }
    }
    return count;
}

unsigned long long DocumentManager::num_documents() const
{
    const std::lock_guard<std::mutex> access(m_container_mutex);
    return m_document_registry.size();
}

DocumentId DocumentManager::first_id() const
{
    return m_first_id;
}

bool DocumentManager::destroy_document(
    const DocumentId& document_id, bool skip_consent, bool second, bool third, DocumentId next_current)
{
    const DocumentId id = document_id; // the argument may be a member of the document that goes
    {
        const QMutexLocker lock(&m_destruction_mutex);
        if (m_in_destruction.count(id) != 0) {
            return true;
        }
    }
    if (!skip_consent) {
        boost::shared_ptr<AbstractDocument> sp_ad;
        {
            const GuardedLocker lock(&m_registry_mutex, s_registry);
            sp_ad = find(id);
        }
        if (!sp_ad) {
            return true;
        }
        if (!sp_ad->request_close(!second, third)) {
            return false;
        }
    }
    {
        const QMutexLocker lock(&m_destruction_mutex);
        m_in_destruction.insert(id);
    }
    Removal in_destruction(m_in_destruction, m_destruction_mutex, id);
    send(id, DocumentMessage::Destroyed);
    drop_document(id, next_current, BOOST_CURRENT_FUNCTION);
    if (num_documents() == 0) {
        give_states_of(nullptr, BOOST_CURRENT_FUNCTION);
    }
    in_destruction.now();
    if (m_current_document) {
        send(m_current_document->id(), DocumentMessage::CurrentChanged);
    }
    return true;
}

/// Takes the document out of the registry, after another one became current. It dies here, with no mutex
/// held, unless somebody else holds or uses it.
void DocumentManager::drop_document(const DocumentId& id, DocumentId next_current, const char* caller)
{
    bool registered = false;
    {
        const GuardedLocker lock(&m_registry_mutex, s_registry);
        registered = document_exists(id);
    }
    if (!HK_ASSERT_IN(registered, "iter != m_document_registry.end()", caller)) {
        return;
    }
    if (m_current_document && m_current_document->id() == id) {
        choose_next_current(id, next_current, caller);
    }
    boost::shared_ptr<AbstractDocument> sp_doomed;
    {
        const GuardedLocker lock(&m_registry_mutex, s_registry);
        const std::lock_guard<std::mutex> access(m_container_mutex);
        const auto iter = m_document_registry.find(id);
        if (iter != m_document_registry.end()) { // a subscriber may have been faster
            sp_doomed = std::move(iter->second);
            m_document_registry.erase(iter);
            ++s_registry_version;
        }
    }
    if (m_current_document == sp_doomed.get()) {
        m_current_document = nullptr; // somebody made it current again meanwhile
    }
    DocumentUse::leave(t_state.p_last_use, sp_doomed);
}

/// Makes another document current than @p id: @p wanted, else the first one, else the one after that.
void DocumentManager::choose_next_current(const DocumentId& id, DocumentId wanted, const char* caller)
{
    boost::shared_ptr<AbstractDocument> sp_ad;
    DocumentId candidate = DocumentId::null();
    {
        const std::lock_guard<std::mutex> access(m_container_mutex);
        if (m_document_registry.size() <= 1) {
            m_current_document = nullptr;
            return;
        }
        auto iter = m_document_registry.find(wanted);
        if (wanted == DocumentId::null() || iter == m_document_registry.end()) {
            iter = m_document_registry.begin();
        }
        if (iter->first == id && ++iter == m_document_registry.end()) {
            iter = m_document_registry.begin();
        }
        candidate = iter->first;
        sp_ad = iter->second;
    }
    HK_ASSERT_IN(!utilities::null_pointer(sp_ad), "!utilities::null_pointer( sp_ad )", caller);
    m_current_document = sp_ad.get();
    current_document(candidate); // refreshes the controllers; no message, since it is current already
}

bool DocumentManager::document_busy(const DocumentId& id, bool busy)
{
    if (busy) {
        add_busy_mark(id, BOOST_CURRENT_FUNCTION);
    } else {
        remove_busy_mark(id, BOOST_CURRENT_FUNCTION);
    }
    return true;
}

void DocumentManager::add_busy_mark(const DocumentId& id, const char* caller)
{
    bool inserted = false;
    {
        const QMutexLocker lock(&m_busy_mutex);
        const auto iter = m_busy.find(id);
        if (iter != m_busy.end()) {
            ++iter->second;
            return;
        }
        inserted = m_busy.insert(std::make_pair(id, 1)).second;
    }
    HK_ASSERT_IN(inserted, "inserted", caller);
    DocumentUse*& p_last = t_state.p_last_use;
    const DocumentUse use = t_state.has_documents ? DocumentUse(p_last, look_up(id, caller))
                                                  : DocumentUse(p_last, find_or_throw(id, caller));
    AbstractDocument& document = use.document();
    if (document.is_busy()) {
        return;
    }
    document.set_busy(true);
    send(id, DocumentMessage::Busy);
}

void DocumentManager::remove_busy_mark(const DocumentId& id, const char* caller)
{
    {
        const QMutexLocker lock(&m_busy_mutex);
        const auto iter = m_busy.find(id);
        if (iter == m_busy.end() || --iter->second >= 1) {
            return;
        }
        m_busy.erase(iter);
    }
    DocumentUse*& p_last = t_state.p_last_use;
    const DocumentUse use = t_state.has_documents ? DocumentUse(p_last, look_up(id, caller))
                                                  : DocumentUse(p_last, find_or_throw(id, caller));
    AbstractDocument& document = use.document();
    if (!document.is_busy()) {
        return;
    }
    // The reverse of the order above: subscribers of both messages see the document busy. The flag goes even
    // if one of them throws, since its mark is gone.
    try {
        send(id, DocumentMessage::Idle);
    } catch (...) {
        document.set_busy(false);
        throw;
    }
    document.set_busy(false);
}

bool DocumentManager::document_busy(const DocumentId& id) const
{
    {
        const QMutexLocker lock(&m_destruction_mutex);
        if (m_in_destruction.count(id) != 0) {
            return false;
        }
    }
    const QMutexLocker lock(&m_busy_mutex);
    return m_busy.count(id) != 0;
}

bool DocumentManager::documents_busy() const
{
    const QMutexLocker lock(&m_busy_mutex);
    return !m_busy.empty();
}

bool DocumentManager::set_document_as_closing(const DocumentId& id)
{
    const boost::shared_ptr<AbstractDocument> sp_ad = find(id);
    if (!sp_ad) {
        return false;
    }
    sp_ad->set_closing();
    return true;
}

void DocumentManager::cleanupInvalidDocuments()
{
    DocumentId last = DocumentId::null();
    while (num_documents() != 0) {
        const DocumentId id = first_after(last);
        if (id == DocumentId::null()) {
            return;
        }
        if (documents_busy()) {
            QTimer::singleShot(0, this, SLOT(cleanupInvalidDocuments()));
            return;
        }
        last = id;
        if (is_invalid(id)) {
            destroy_document(id, false, false, false, DocumentId::null());
            if (!document_exists(id)) {
                last = DocumentId::null(); // from the start again; a document that refused is stepped over
                                           // instead
            }
        }
    }
}

/// The id of the first registered document after @p id; null at the end.
DocumentId DocumentManager::first_after(const DocumentId& id) const
{
    const std::lock_guard<std::mutex> access(m_container_mutex);
    const auto iter = m_document_registry.upper_bound(id);
    return iter == m_document_registry.end() ? DocumentId::null() : iter->first;
}

bool DocumentManager::is_invalid(const DocumentId& id) const
{
    const boost::shared_ptr<AbstractDocument> sp_ad = find(id);
    return sp_ad && sp_ad->empty() && !sp_ad->is_busy() && sp_ad->is_closing();
}

void DocumentManager::handle_message(housekeeping::CommandMessage& message)
{
    switch (message.command_type()) {
    case CommandMessage::Done:
    case CommandMessage::Undone:
    case CommandMessage::Failed:
        break; // no type needs an action of the documents
    }
}

} // namespace tarqa::housekeeping

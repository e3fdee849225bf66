#pragma once

#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/MessageFamily.h>

namespace tarqa::housekeeping {

class DocumentMessage;
extern template class TQ_HK_EXPORT MessageFamily<DocumentMessage>;

/// Announces a change in the set or the state of the open documents; sent at once by the document manager,
/// Busy and Idle in the thread of the mark, the others on the main thread. See Message for who deletes it.
class TQ_HK_EXPORT DocumentMessage : public MessageFamily<DocumentMessage>
{
    Q_OBJECT

public:
    /// What changed. The values not named here are never sent by the framework; a host may use them.
    enum DocChangeType : int
    {
        NoChange = 0,
        Created = 1, ///< created and registered
        Destroyed = 4, ///< about to go; still registered during the message
        Busy = 5, ///< an operation holds the document
        Idle = 6, ///< no operation holds it any more
        CurrentChanged = 15 ///< id() is the new current document
    };

    /// The text that slots and signals name the class by; see MessageFamily.
    static const char* type_name() { return "housekeeping::DocumentMessage"; }

    DocumentMessage();
    DocumentMessage(const DocumentMessage&);
    ~DocumentMessage() override;

    /// What changed.
    void doc_change_type(DocChangeType type) { m_doc_change_type = type; }
    DocChangeType doc_change_type() const { return m_doc_change_type; }

    /// Sets the document concerned.
    void id(DocumentId id);
    /// The document concerned; the null id, and logged ("m_id_set"), if none was set.
    DocumentId id() const;

signals:
    /// Carries each message to the subscribers; connected by subscribe(), emitted by dispatch().
    void message_dispatched(housekeeping::DocumentMessage&);

private:
    friend class MessageFamily<DocumentMessage>;
    friend class TestAccess;
    void class_instance_dispatch(DocumentMessage* p_message);

    DocChangeType m_doc_change_type = NoChange;
    DocumentId m_id = DocumentId::null();
    bool m_id_set = false;
};

} // namespace tarqa::housekeeping

#pragma once

#include <tarqa/housekeeping/MessageFamily.h>

namespace tarqa::housekeeping {

class DocumentHistoryMsg;
extern template class TQ_HK_EXPORT MessageFamily<DocumentHistoryMsg>;

/// Announces that the undo or redo stack of some document changed; sent from the stack, in the thread of the
/// change.
class TQ_HK_EXPORT DocumentHistoryMsg : public MessageFamily<DocumentHistoryMsg>
{
    Q_OBJECT

public:
    /// The text that slots and signals name the class by; see MessageFamily.
    static const char* type_name() { return "housekeeping::DocumentHistoryMsg"; }

    DocumentHistoryMsg();
    DocumentHistoryMsg(const DocumentHistoryMsg&);
    ~DocumentHistoryMsg() override;

signals:
    /// Carries each message to the subscribers; connected by subscribe(), emitted by dispatch().
    void message_dispatched(housekeeping::DocumentHistoryMsg&);

private:
    friend class MessageFamily<DocumentHistoryMsg>;
    friend class TestAccess;
    void class_instance_dispatch(DocumentHistoryMsg* p_message);

    int m_kind = 0; // always 0 as sent; reserved for telling the stacks apart
};

} // namespace tarqa::housekeeping

#pragma once

#include <tarqa/housekeeping/MessageFamily.h>

namespace tarqa::housekeeping {

class ApplicationMessage;
extern template class TQ_HK_EXPORT MessageFamily<ApplicationMessage>;

/// A message of the host's own; the framework neither sends nor receives it. May be posted from any
/// thread; see Message for who deletes it.
class TQ_HK_EXPORT ApplicationMessage : public MessageFamily<ApplicationMessage>
{
    Q_OBJECT

public:
    /// What the message asks for; the host may use any other value.
    enum OpType : int
    {
        DefaultOperation = 1
    };

    /// The text that slots and signals name the class by; see MessageFamily.
    static const char* type_name() { return "housekeeping::ApplicationMessage"; }

    ApplicationMessage();
    ApplicationMessage(const ApplicationMessage&);
    ~ApplicationMessage() override;

    /// What the message asks for.
    void opType(OpType type) { m_op_type = type; }
    OpType opType() const { return m_op_type; }

signals:
    /// Carries each message to the subscribers; connected by subscribe(), emitted by dispatch().
    void message_dispatched(housekeeping::ApplicationMessage&);

private:
    friend class MessageFamily<ApplicationMessage>;
    friend class TestAccess;
    void class_instance_dispatch(ApplicationMessage* p_message);

    OpType m_op_type = DefaultOperation;
};

} // namespace tarqa::housekeeping

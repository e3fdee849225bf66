#pragma once

#include <tarqa/housekeeping/CommandId.h>
#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/MessageFamily.h>

namespace tarqa::housekeeping {

class AbstractCommand;
class CommandMessage;
extern template class TQ_HK_EXPORT MessageFamily<CommandMessage>;

/**
 * Announces the end of a command's do, redo or undo run; sent at once, in the thread that ran the command.
 * Not sent for the children of a composite.
 *
 * The command pointer is valid during the call in that thread only: a receiver in another thread, which gets
 * a copy later, uses the ids and the type.
 */
class TQ_HK_EXPORT CommandMessage : public MessageFamily<CommandMessage>
{
    Q_OBJECT

public:
    /// How the run ended.
    enum CommandType : int
    {
        Done = 0, ///< done or redone, and succeeded
        Undone = 1,
        Failed = 3 ///< done or redone, and failed or was cancelled; 2 is never sent
    };

    /// The text that slots and signals name the class by; see MessageFamily.
    static const char* type_name() { return "housekeeping::CommandMessage"; }

    CommandMessage();
    CommandMessage(const CommandMessage&);
    ~CommandMessage() override;

    /// A null command is logged ("p_cmd") and stored all the same. Not owned.
    void command(AbstractCommand* p_cmd);
    /// Null, and logged ("m_p_command"), if no command was stored.
    const AbstractCommand* command() const;

    /// How the run ended.
    void command_type(CommandType type) { m_command_type = type; }
    CommandType command_type() const { return m_command_type; }
    /// The id of the command.
    void id(CommandId id) { m_id = id; }
    CommandId id() const { return m_id; }
    /// The document that the command worked on.
    void document_id(DocumentId id) { m_document_id = id; }
    DocumentId document_id() const { return m_document_id; }
    /// Says that the run repeats something that was undone.
    void setAsRedoCommand(bool redo) { m_redo = redo; }
    /// True for a redo, false for a first execution.
    bool isRedoCommand() const { return m_redo; }

signals:
    /// Carries each message to the subscribers; connected by subscribe(), emitted by dispatch().
    void message_dispatched(housekeeping::CommandMessage&);

private:
    friend class MessageFamily<CommandMessage>;
    friend class TestAccess;
    void class_instance_dispatch(CommandMessage* p_message);

    AbstractCommand* m_p_command = nullptr; // not owned
    CommandId m_id = CommandId::null();
    CommandType m_command_type = Done;
    DocumentId m_document_id = DocumentId::null();
    bool m_redo = false;
};

} // namespace tarqa::housekeeping

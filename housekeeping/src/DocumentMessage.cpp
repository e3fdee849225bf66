#include <tarqa/housekeeping/DocumentMessage.h>

#include "Assertion.h"

namespace tarqa::housekeeping {

template class MessageFamily<DocumentMessage>;

namespace {

const char* const s_source = "housekeeping/src/DocumentMessage";

} // namespace

DocumentMessage::DocumentMessage() = default;
DocumentMessage::~DocumentMessage() = default;

DocumentMessage::DocumentMessage(const DocumentMessage&) = default;

void DocumentMessage::class_instance_dispatch(DocumentMessage* p_message)
{
    if (HK_ASSERT(p_message, "p_message")) {
        emit message_dispatched(*p_message);
    }
}

void DocumentMessage::id(DocumentId id)
{
    m_id = id;
    m_id_set = true;
}

DocumentId DocumentMessage::id() const
{
    HK_ASSERT(m_id_set, "m_id_set");
    return m_id;
}

} // namespace tarqa::housekeeping

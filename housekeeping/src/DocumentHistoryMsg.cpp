#include <tarqa/housekeeping/DocumentHistoryMsg.h>

#include "Assertion.h"

namespace tarqa::housekeeping {

template class MessageFamily<DocumentHistoryMsg>;

namespace {

const char* const s_source = "housekeeping/src/DocumentHistoryMsg";

} // namespace

DocumentHistoryMsg::DocumentHistoryMsg() = default;
DocumentHistoryMsg::~DocumentHistoryMsg() = default;

DocumentHistoryMsg::DocumentHistoryMsg(const DocumentHistoryMsg&) = default;

void DocumentHistoryMsg::class_instance_dispatch(DocumentHistoryMsg* p_message)
{
    if (HK_ASSERT(p_message, "p_message")) {
        emit message_dispatched(*p_message);
    }
}

} // namespace tarqa::housekeeping

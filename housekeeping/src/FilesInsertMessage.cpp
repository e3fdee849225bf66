#include <tarqa/housekeeping/FilesInsertMessage.h>

#include "Assertion.h"

namespace tarqa::housekeeping {

template class MessageFamily<FilesInsertMessage>;

namespace {

const char* const s_source = "housekeeping/src/FilesInsertMessage";

} // namespace

FilesInsertMessage::FilesInsertMessage() = default;
FilesInsertMessage::~FilesInsertMessage() = default;

FilesInsertMessage::FilesInsertMessage(const FilesInsertMessage&) = default;

void FilesInsertMessage::class_instance_dispatch(FilesInsertMessage* p_message)
{
    if (HK_ASSERT(p_message, "p_message")) {
        emit message_dispatched(*p_message);
    }
}

} // namespace tarqa::housekeeping

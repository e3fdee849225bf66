#include "WordsWriter.h"

#include <cstring>

namespace tarqa::housekeeping {

WordsWriter& WordsWriter::operator<<(const char* text)
{
    m_write(m_handle, text, std::strlen(text));
    return *this;
}

WordsWriter& WordsWriter::operator<<(unsigned long long number)
{
    this->number(number, 10);
    return *this;
}

WordsWriter& WordsWriter::hexadecimal(std::uintptr_t number)
{
    *this << "0x";
    this->number(number, 16);
    return *this;
}

void WordsWriter::number(unsigned long long number, unsigned int base)
{
    char digits[24];
    char* p_first = digits + sizeof digits;
    do {
        *--p_first = "0123456789abcdef"[number % base];
        number /= base;
    } while (number > 0);
    m_write(m_handle, p_first, static_cast<std::size_t>(digits + sizeof digits - p_first));
}

WordsWriter& WordsWriter::running_command(const RunningCommand::Entry& entry, long thread)
{
    return *this << "Running: " << entry.what << " of command " << entry.command_id << " \"" << entry.command
                 << "\" on document " << entry.document_id << " \"" << entry.document << "\" in thread "
                 << static_cast<unsigned long long>(thread);
}

void WordsWriter::running_commands(long dying_thread)
{
    bool any = false;
    for (std::size_t i = 0; i < RunningCommand::s_count; ++i) {
        const RunningCommand::Entry& entry = RunningCommand::entries()[i];
        const long thread = entry.thread.load(std::memory_order_acquire);
        if (thread == 0) {
            continue;
        }
        any = true;
        running_command(entry, thread) << (thread == dying_thread ? ", the one that died\n" : "\n");
    }
    if (!any) {
        *this << "Running: no command\n";
    }
}

} // namespace tarqa::housekeeping

#include <tarqa/housekeeping/ThreadLocal.h>

#include "Assertion.h"

namespace tarqa::housekeeping {

namespace {

// Deliberately that of the application: the log names one source for all of the start-up.
const char* const s_source = "housekeeping/src/ApplicationManager";

} // namespace

std::atomic<unsigned int> ThreadLocal::s_next_id{1};

ThreadLocal::ThreadLocal()
    : m_main_thread(std::this_thread::get_id())
{
    HK_ASSERT(!m_thread_local_ids.hasLocalData(), "!m_thread_local_ids.hasLocalData()");
    m_main_thread_id = s_next_id++;
}

ThreadLocal::~ThreadLocal() = default;

pkBase::pkSingleton<ThreadLocal>& ThreadLocal::get_instance()
{
    static pkBase::pkSingleton<ThreadLocal> s_holder(
        pkBase::pkDestructionPhase(5), &ThreadLocal::destroy_instance);
    return s_holder;
}

ThreadLocal& ThreadLocal::instance()
{
    return get_instance().get();
}

void ThreadLocal::destroy_instance()
{
    get_instance().destroy();
}

unsigned int ThreadLocal::thread_local_id()
{
    if (std::this_thread::get_id() == m_main_thread) {
        return m_main_thread_id;
    }
    if (!m_thread_local_ids.hasLocalData()) {
        m_thread_local_ids.setLocalData(s_next_id++);
    }
    return m_thread_local_ids.localData();
}

unsigned int ThreadLocal::main_thread_id()
{
    HK_ASSERT(m_main_thread_id, "m_main_thread_id");
    return m_main_thread_id;
}

bool ThreadLocal::is_main_thread()
{
    HK_ASSERT(m_main_thread_id, "m_main_thread_id");
    return thread_local_id() == m_main_thread_id;
}

} // namespace tarqa::housekeeping

#pragma once

#include <pkBase/pkDestructor.h>

#include <atomic>
#include <memory>
#include <mutex>

namespace pkBase {

/**
 * The holder of one singleton of class @p T: an owning pointer that is filled at first use, refilled when it
 * is found empty, and emptied by the ordered destruction.
 *
 * It is meant to be a function-local static of a private `get_instance()` of T. It is constant-initialised
 * and has no destructor, so it works in every static constructor and destructor, and get() costs one acquire
 * load. T makes the holder its friend, which leaves its constructor and destructor private or protected:
 *
 *     pkBase::pkSingleton<Log>& Log::get_instance()
 *     {
 *         static pkBase::pkSingleton<Log> holder(pkBase::pkDestructionPhase(5), &Log::destroy_instance);
 *         return holder;
 *     }
 *     Log& Log::instance() { return get_instance().get(); }
 *     void Log::destroy_instance() { get_instance().destroy(); }
 *
 * Any thread. T's constructor must not ask for its own instance.
 */
template <class T>
class pkSingleton
{
public:
    /// @param phase when the object goes, in the ordered destruction
    /// @param destroyer entered there once, when the object is first made; it is to call destroy()
    constexpr pkSingleton(pkDestructionPhase phase, pkDestructor::Function destroyer)
        : m_phase(phase)
        , m_destroy(destroyer)
    { }
    pkSingleton(const pkSingleton&) = delete;
    pkSingleton& operator=(const pkSingleton&) = delete;

    /// The object; made now if there is none.
    T& get()
    {
        T* p_object = m_object.load(std::memory_order_acquire);
        return p_object ? *p_object : fill();
    }

    /// The object, or null; never makes one. For destructors, which must not bring anything back to life.
    T* peek() const { return m_object.load(std::memory_order_acquire); }

    /// Deletes the object, if there is one. The holder is empty before the object's destructor runs.
    void destroy()
    {
        std::unique_ptr<T, Deleter> doomed(m_object.exchange(nullptr, std::memory_order_acq_rel));
    }

    /// Enters the destroying function now, before the object exists, so that it is called after everything
    /// that is entered into the same phase later.
    void reserve_destruction()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        register_locked();
    }

private:
    struct Deleter
    {
        void operator()(T* p_object) const { delete p_object; }
    };

    T& fill()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (T* p_object = m_object.load(std::memory_order_acquire)) {
            return *p_object;
        }
        std::unique_ptr<T, Deleter> fresh(new T);
        register_locked();
        m_object.store(fresh.get(), std::memory_order_release);
        return *fresh.release();
    }

    void register_locked()
    {
        if (!m_registered) {
            m_registered = true;
            pkDestructor(m_phase, m_destroy);
        }
    }

    pkDestructionPhase m_phase;
    pkDestructor::Function m_destroy;
    std::mutex m_mutex;
    std::atomic<T*> m_object{nullptr}; // owned
    bool m_registered = false; // guarded by m_mutex
};

} // namespace pkBase

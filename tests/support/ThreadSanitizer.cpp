// Makes Qt's mutexes known to ThreadSanitizer. Part of the tests that are built with it, of nothing else.
//
// Debian's Qt is not instrumented: the sanitizer sees neither that QMutex orders what two threads do nor that
// a thread of the pool starts after what was done before it, and reports every access that a lock guards as a
// race. The functions here stand before those of the library, call them, and tell the sanitizer what they
// mean.

#include <QMutex>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

namespace {

/// The library's function of this mangled name, in the order in which objects are searched after the program.
template <class Function>
Function behind(const char* mangled)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, mangled));
}

} // namespace

void QMutex::lock() QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto real = behind<void (*)(QMutex*)>("_ZN6QMutex4lockEv");
    real(this);
    __tsan_acquire(this);
}

bool QMutex::tryLock(int timeout) QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto real = behind<bool (*)(QMutex*, int)>("_ZN6QMutex7tryLockEi");
    const bool locked = real(this, timeout);
    if (locked) {
        __tsan_acquire(this);
    }
    return locked;
}

void QMutex::unlock() noexcept
{
    static const auto real = behind<void (*)(QMutex*)>("_ZN6QMutex6unlockEv");
    __tsan_release(this);
    real(this);
}

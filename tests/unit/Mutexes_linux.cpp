#include "Mutexes_linux.h"

#include <dlfcn.h>
#include <pthread.h>

#include <cerrno>

static thread_local Mutexes* current = nullptr;

Mutexes::Mutexes() { current = this; }
Mutexes::~Mutexes() { current = nullptr; }

// These replace the system's functions in this program.

extern "C" int pthread_mutex_lock (pthread_mutex_t* mutex) noexcept
{
    static const auto original = reinterpret_cast<decltype (&pthread_mutex_lock)> (
        dlsym (RTLD_NEXT, "pthread_mutex_lock"));

    if (current != nullptr)
    {
        ++current->attempts;

        if (current->cannotBeLocked)
            return EINVAL;
    }

    return original (mutex);
}

extern "C" int pthread_mutex_destroy (pthread_mutex_t* mutex) noexcept
{
    static const auto original = reinterpret_cast<decltype (&pthread_mutex_destroy)> (
        dlsym (RTLD_NEXT, "pthread_mutex_destroy"));

    if (current != nullptr && current->onDestruction)
        current->onDestruction();

    return original (mutex);
}

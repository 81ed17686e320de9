#include "LiveTexts.h"

#include <atomic>
#include <cstdlib>
#include <new>

static std::atomic<int> made;
static std::atomic<int> deleted;

int countLiveTexts() { return made - deleted; }
int countTextsMade() { return made; }

// These replace the standard operators in this program.

void* operator new[] (std::size_t size)
{
    ++made;

    if (auto* const memory = std::malloc (size == 0 ? 1 : size))
        return memory;

    throw std::bad_alloc();
}

void operator delete[] (void* memory) noexcept
{
    deleted += memory != nullptr ? 1 : 0;
    std::free (memory);
}

void operator delete[] (void* memory, std::size_t) noexcept { operator delete[] (memory); }

#include <sanitizer/common_interface_defs.h>

#include <cstddef>

extern "C" void* __libc_stack_end;

// Tells AddressSanitizer where the stack is, which it otherwise learns from /proc. It has to know what an
// exception leaves behind, or it finds faults that are none, and not every machine of the tests has /proc.
[[gnu::constructor]] static void tellStackBounds()
{
    constexpr std::size_t size = 8 << 20; // as large as Linux makes it

    __sanitizer_start_switch_fiber (nullptr, static_cast<char*> (__libc_stack_end) - size, size);
    __sanitizer_finish_switch_fiber (nullptr, nullptr, nullptr);
}

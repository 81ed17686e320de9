#include <sanitizer/common_interface_defs.h>

#include <cstddef>

extern "C" void* __libc_stack_end;

// Gives AddressSanitizer the bounds of the stack, which it otherwise reads from /proc, and not every test machine
// has /proc. Without them it cannot unpoison the stack that an exception unwinds, and reports false errors.
[[gnu::constructor]] static void tellStackBounds()
{
    constexpr std::size_t size = 8 << 20; // Linux's default

    __sanitizer_start_switch_fiber (nullptr, static_cast<char*> (__libc_stack_end) - size, size);
    __sanitizer_finish_switch_fiber (nullptr, nullptr, nullptr);
}

#pragma once

#include <cstdlib>
#include <memory>

namespace tavro::x11 {

/// Gives back what the X library has allocated.
struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};

/// An answer, event or error of the X server.
template <class T>
using Freed = std::unique_ptr<T, FreeDeleter>;

} // namespace tavro::x11

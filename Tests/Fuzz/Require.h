#pragma once

#include <cstdio>
#include <cstdlib>

namespace tavro {

/// Ends the fuzzer, which keeps the input that led here.
inline void require(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "not so: %s\n", what);
        std::abort();
    }
}

} // namespace tavro

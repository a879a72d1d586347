#pragma once

#include <cstdio>
#include <cstdlib>

// A broken promise of the code under test: say which one and stop, so that the fuzzer keeps
// the input and the corpus replay fails on it.
#define ZEB_FUZZ_CHECK(condition, what)                                                            \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: broken promise: %s (%s)\n", __FILE__, __LINE__, what,     \
                         #condition);                                                              \
            std::abort();                                                                          \
        }                                                                                          \
    } while (false)

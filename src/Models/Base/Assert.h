// A broken contract between our own functions ends the program with a message of one line. Unexpected input from
// outside never ends it.
#pragma once

#include <cstdio>
#include <cstdlib>

#define KORVANE_ASSERT(condition, message)                                                                             \
    do {                                                                                                               \
        if (!(condition)) {                                                                                            \
            std::fprintf(stderr, "korvane: %s (%s:%d)\n", message, __FILE__, __LINE__);                                \
            std::abort();                                                                                              \
        }                                                                                                              \
    } while (false)

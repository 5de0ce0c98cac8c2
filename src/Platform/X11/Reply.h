// Memory that the X library returns must be released with free().
#pragma once

#include <cstdlib>
#include <memory>

namespace korvane::platform::x11 {

struct Freed {
    void operator()(void *memory) const { std::free(memory); }
};

// Null when the server answered with an error or did not answer.
template <typename T> using Reply = std::unique_ptr<T, Freed>;

}  // namespace korvane::platform::x11

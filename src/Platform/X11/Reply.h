// What the X library hands out has to be given back with free().
#pragma once

#include <cstdlib>
#include <memory>

namespace korvane::platform::x11 {

struct Freed {
    void operator()(void *memory) const { std::free(memory); }
};

// Null when the server answered with an error or not at all.
template <typename T> using Reply = std::unique_ptr<T, Freed>;

}  // namespace korvane::platform::x11

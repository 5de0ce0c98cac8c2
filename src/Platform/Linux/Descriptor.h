// A file descriptor that is closed when its owner is destroyed.
#pragma once

#include <unistd.h>
#include <utility>

namespace korvane::platform {

class Descriptor {
public:
    // Takes ownership of a descriptor that the system has opened. A negative number means none.
    explicit Descriptor(int opened = -1) : number(opened) {}
    Descriptor(Descriptor &&other) noexcept : number(std::exchange(other.number, -1)) {}
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(number, other.number);
        return *this;
    }
    ~Descriptor()
    {
        if (number >= 0)
            ::close(number);
    }
    int get() const { return number; }
    explicit operator bool() const { return number >= 0; }

private:
    int number;
};

}  // namespace korvane::platform

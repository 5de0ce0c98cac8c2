// The element of a list that a number stands for, whatever the list's length; null if there is none.
#pragma once

#include <cstdint>

namespace korvane::testing {

template <typename List> const typename List::value_type *pick(const List &list, std::uint8_t number)
{
    return list.empty() ? nullptr : &list[number % list.size()];
}

}  // namespace korvane::testing

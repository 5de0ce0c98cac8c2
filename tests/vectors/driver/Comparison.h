// Strict comparison of two JSON values, which says where they part.
#pragma once

#include "tests/vectors/driver/Case.h"

#include <optional>
#include <string>

namespace korvane::vectors {

// The first difference as one line "path: expected ..., got ..."; absent when the values are equal. Whole numbers
// compare as such, any other number bit for bit as a double.
std::optional<std::string> firstDifference(const Json &expected, const Json &got, const std::string &path);

// The outcome of a case that is to give that value.
Outcome compared(const Json &expected, const Json &got, const std::string &path = "result");

}  // namespace korvane::vectors

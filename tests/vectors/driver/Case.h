// One case of a file: what running it gives.
#pragma once

#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

namespace korvane::vectors {

using Json = nlohmann::json;

struct Outcome {
    enum class Kind { passed, failed, skipped } kind = Kind::passed;
    std::string reason;  // of a failure or a skip

    static Outcome pass() { return {}; }
    static Outcome fail(std::string reason) { return {Kind::failed, std::move(reason)}; }
    // For what the program can't do yet. A skipped case counts as skipped, never as passed.
    static Outcome skip(std::string reason) { return {Kind::skipped, std::move(reason)}; }
};

// Runs one case of a file; the second value is the whole file.
using CaseRunner = std::function<Outcome(const Json &testCase, const Json &file)>;
// From arguments to a result, for areas whose cases name a function.
using Functions = std::map<std::string, std::function<Json(const Json &arguments)>, std::less<>>;

}  // namespace korvane::vectors

// What the core asked the simulated desktop to do, in order.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace korvane::platform::simulated {

// Nothing, a truth value, a number, a text or several texts.
using ActionArgument = std::variant<std::monostate, bool, std::int64_t, double, std::string, std::vector<std::string>>;

struct Action {
    std::string name;
    std::vector<ActionArgument> arguments;
    friend bool operator==(const Action &, const Action &) = default;
};

class ActionLog {
public:
    void add(std::string_view name, std::vector<ActionArgument> arguments = {})
    {
        if (recording)
            actions.push_back({std::string(name), std::move(arguments)});
    }
    // The actions since the beginning or since the last take().
    const std::vector<Action> &all() const { return actions; }
    // Returns the actions and empties the log.
    std::vector<Action> take() { return std::exchange(actions, {}); }
    // Switch it off for benchmarks, which would otherwise measure the log.
    void setRecording(bool on) { recording = on; }

private:
    std::vector<Action> actions;
    bool recording = true;
};

}  // namespace korvane::platform::simulated

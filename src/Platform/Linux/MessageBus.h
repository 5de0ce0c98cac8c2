// A connection to one of the desktop's message buses, for everything here that talks to a service. It is made without
// waiting, and made anew when the bus has gone and comes back.
#pragma once

#include "Ports/MainLoop.h"

#include <functional>
#include <memory>
#include <string>

typedef struct _GVariant GVariant;  // GLib's header stays out of headers

namespace korvane::platform {

// What it hands out follows the rule of every subscription: once it is destroyed no call comes, whatever is under way.
// Any of them may be destroyed inside of its own call, and may outlive the bus.
class MessageBus {
public:
    enum class Kind { session, system };

    // Connects from now on; nothing waits for it. A bus that is not there is tried again after one second, then after
    // ever longer times up to a minute, and at once when somebody calls a method.
    MessageBus(MainLoop &loop, Kind kind);
    ~MessageBus();
    MessageBus(const MessageBus &) = delete;
    MessageBus &operator=(const MessageBus &) = delete;

    // What is left empty may be anything.
    struct Signal {
        std::string sender, path, interface, name;
    };
    // Told of each such signal, also those of a bus that came back later. The arguments live as long as the call.
    using Heard = std::function<void(const std::string &sender, GVariant *arguments)>;
    [[nodiscard]] Subscription listen(Signal signal, Heard heard);

    // Told whether somebody owns the name, once the bus has said so and whenever it changes. Nobody does on a bus that
    // was lost.
    [[nodiscard]] Subscription watch(std::string name, std::function<void(bool present)> told);

    struct Method {
        std::string destination, path, interface, name;
        const char *answerType = nullptr;  // "(u)"; null for any
    };
    struct Answer {
        GVariant *value = nullptr;  // null for a refusal, for none in five seconds and without a bus
        std::string error;          // the refusal's name; empty where nobody refused
    };
    // Calls a method of a service that runs already; no service is started for it. Takes the arguments over. The answer
    // comes once, from the run loop, and lives as long as that call.
    [[nodiscard]] Subscription call(Method method, GVariant *arguments, std::function<void(const Answer &)> answered);

    // Whether the bus takes a connection or refuses it, or there is none. False when it does neither in that time, for
    // which this waits: before a library is used that would wait without an end.
    static bool answersWithin(Seconds time, Kind kind);

private:
    class Connection;
    class Interest;
    class Listening;
    class Watching;
    class Calling;
    std::shared_ptr<Connection> connection;
};

}  // namespace korvane::platform

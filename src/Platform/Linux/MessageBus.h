// A connection to one of the desktop's message buses, for all code here that talks to a service. Connecting never
// blocks. If the bus goes away and comes back, the connection is made again.
#pragma once

#include "Ports/MainLoop.h"

#include <functional>
#include <memory>
#include <string>

// GLib's header stays out of headers, so its type is declared here by the name that GLib gave it.
typedef struct _GVariant GVariant;  // NOLINT(bugprone-reserved-identifier)

namespace korvane::platform {

// Subscriptions follow the usual rule: after one is destroyed, its callback is not called, even if an answer is on its
// way. A subscription may be destroyed inside its own callback, and may outlive the bus.
class MessageBus {
public:
    enum class Kind { session, system };

    // Starts to connect; nothing waits for it. If there is no bus, it tries again after one second, then after longer
    // and longer times up to a minute. A method call makes it try at once.
    MessageBus(MainLoop &loop, Kind kind);
    ~MessageBus();
    MessageBus(const MessageBus &) = delete;
    MessageBus &operator=(const MessageBus &) = delete;

    // An empty field matches anything.
    struct Signal {
        std::string sender, path, interface, name;
    };
    // Called for each matching signal, also after the bus was lost and came back. The arguments are valid during the
    // call only.
    using Heard = std::function<void(const std::string &sender, GVariant *arguments)>;
    [[nodiscard]] Subscription listen(Signal signal, Heard heard);

    // Tells whether the name has an owner: when the bus first answers and after each change. When the bus is lost, the
    // name has no owner.
    [[nodiscard]] Subscription watch(std::string name, std::function<void(bool present)> told);

    struct Method {
        std::string destination, path, interface, name;
        const char *answerType = nullptr;  // "(u)"; null for any
    };
    struct Answer {
        GVariant *value = nullptr;  // null after a refusal, after five seconds without an answer, and without a bus
        std::string error;          // the name of the refusal's error; empty if nobody refused
    };
    // Calls a method of a running service; it never starts a service. Takes ownership of the arguments. The answer
    // comes once, from the run loop, and is valid during that call only.
    [[nodiscard]] Subscription call(Method method, GVariant *arguments, std::function<void(const Answer &)> answered);

    // True if the bus accepts a connection or refuses it, or if there is no bus. False if it does neither in that time.
    // This function waits; use it before a library that would wait for ever.
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

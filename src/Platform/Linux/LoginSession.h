// Whether somebody can be in front of the desktop, according to logind. Nobody is there when another session is in
// front, when the session is locked, or when the machine is about to sleep.
#pragma once

#include "Platform/Linux/MessageBus.h"

#include <functional>
#include <string>

namespace korvane::platform {

class LoginSession {
public:
    // Starts to listen. Without logind nobody is ever away. `changed` is called from the run loop with the new answer
    // of isAway(). No call waits for the bus.
    LoginSession(MessageBus &systemBus, std::function<void(bool away)> changed);
    ~LoginSession();
    LoginSession(const LoginSession &) = delete;
    LoginSession &operator=(const LoginSession &) = delete;

    bool isAway() const { return !active || locked || sleeping; }

private:
    void managerCameOrWent(bool present);
    void follow(const std::string &path);
    void read();
    void takeChanges(GVariant *arguments);
    void takeSleep(GVariant *arguments);
    void takeProperties(GVariant *values);
    void update(const std::function<void()> &change);

    MessageBus &bus;
    std::function<void(bool)> changed;
    std::string session;
    bool active = true, locked = false, sleeping = false;
    Subscription manager, sleepSignal, propertySignal, question;
};

}  // namespace korvane::platform

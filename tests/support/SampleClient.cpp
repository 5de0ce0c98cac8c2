#include "tests/support/SampleClient.h"

#include <stdexcept>

namespace korvane::testing {

SampleClient::SampleClient(const XServer &server, const std::string &name)
    : process(server.start({KORVANE_SAMPLE_CLIENT, name}, true))
{
    if (process->readLine() != "ready")
        throw std::runtime_error("the sample program did not start");
}

std::string SampleClient::tell(const std::string &command)
{
    process->write(command + "\n");
    // Without an answer the program is stopped or has ended, which is what some tests are about.
    return process->readLine(20'000).value_or("");
}

std::uint32_t SampleClient::open(int window, const std::string &title)
{
    const auto id = create(window, title);
    show(window);
    return id;
}

std::uint32_t SampleClient::create(int window, const std::string &title)
{
    return static_cast<std::uint32_t>(std::stoul(tell("create " + std::to_string(window) + " " + title)));
}

std::uint32_t SampleClient::identifier(int window)
{
    return static_cast<std::uint32_t>(std::stoul(tell("id " + std::to_string(window))));
}

void SampleClient::remove(int window, const std::string &property)
{
    tell("remove " + std::to_string(window) + " " + property);
}

void SampleClient::setAtoms(int window, const std::string &property, const std::vector<std::string> &names)
{
    std::string command = "atoms " + std::to_string(window) + " " + property;
    for (const std::string &name : names)
        command += " " + name;
    tell(command);
}

void SampleClient::setBytes(int window, const std::string &property, const std::string &type, std::string_view bytes)
{
    setRaw(window, property, type, 8, bytes);
}

void SampleClient::setNumbers(int window, const std::string &property, const std::string &type,
                              const std::vector<std::uint32_t> &numbers)
{
    setRaw(window, property, type, 32,
           {reinterpret_cast<const char *>(numbers.data()), numbers.size() * sizeof(std::uint32_t)});
}

void SampleClient::setRaw(int window, const std::string &property, const std::string &type, int format,
                          std::string_view bytes)
{
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        text += digits[static_cast<unsigned char>(byte) >> 4];
        text += digits[byte & 0xf];
    }
    tell("raw " + std::to_string(window) + " " + property + " " + type + " " + std::to_string(format) + " " + text);
}

void SampleClient::setTransient(int window, std::uint32_t owner, bool modal)
{
    setNumbers(window, "WM_TRANSIENT_FOR", "WINDOW", {owner});
    if (modal)
        setAtoms(window, "_NET_WM_STATE", {"_NET_WM_STATE_MODAL"});
}

void SampleClient::openMany(int first, int count)
{
    tell("many " + std::to_string(first) + " " + std::to_string(count));
}

}  // namespace korvane::testing

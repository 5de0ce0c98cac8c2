#include "Platform/X11/ClientPids.h"

#include "Platform/X11/Reply.h"

#include <bit>
#include <limits>
#include <unistd.h>
#include <utility>
#include <xcb/res.h>

namespace korvane::platform::x11 {
namespace {

// Smaller than any number that has another meaning.
constexpr Pid firstSynthetic = -1000;

std::string ownMachine()
{
    char name[256] = {};
    return gethostname(name, sizeof name - 1) == 0 ? name : "";
}

Pid pidIn(const xcb_res_query_client_ids_reply_t &reply)
{
    auto values = xcb_res_query_client_ids_ids_iterator(&reply);
    for (; values.rem > 0; xcb_res_client_id_value_next(&values))
        if ((values.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID)
            && xcb_res_client_id_value_value_length(values.data) > 0) {
            const std::uint32_t pid = *xcb_res_client_id_value_value(values.data);
            if (pid <= static_cast<std::uint32_t>(std::numeric_limits<Pid>::max()))
                return static_cast<Pid>(pid);
        }
    return 0;
}

}  // namespace

ClientPids::ClientPids(Connection &server)
    : connection(server), mask(server.setup().resource_id_mask), machine(ownMachine())
{}

void ClientPids::prepare(const std::vector<WindowId> &windows)
{
    if (!connection.extensions().clientIds)
        return;
    std::vector<std::pair<std::uint32_t, xcb_res_query_client_ids_cookie_t>> asked;
    for (const WindowId window : windows) {
        if (std::exchange(clients[client(window)].asked, true))
            continue;
        const xcb_res_client_id_spec_t spec{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
        asked.emplace_back(client(window), xcb_res_query_client_ids(connection, 1, &spec));
    }
    for (const auto &[base, cookie] : asked) {
        const Reply<xcb_res_query_client_ids_reply_t> reply{
            xcb_res_query_client_ids_reply(connection, cookie, nullptr)};
        if (reply)
            clients[base].pid = pidIn(*reply);
    }
}

Pid ClientPids::of(const WindowRecord &window) const
{
    const auto base = client(window.id);
    if (const auto known = clients.find(base); known != clients.end() && known->second.pid > 0)
        return known->second.pid;
    const bool local = window.machine.empty() || window.machine == machine;
    if (local && window.declaredPid > 0
        && window.declaredPid <= static_cast<std::uint32_t>(std::numeric_limits<Pid>::max()))
        return static_cast<Pid>(window.declaredPid);
    return firstSynthetic - static_cast<Pid>(base >> std::popcount(mask));
}

void ClientPids::release(WindowId window)
{
    const auto known = clients.find(client(window));
    if (known != clients.end() && --known->second.windows <= 0)
        clients.erase(known);
}

}  // namespace korvane::platform::x11

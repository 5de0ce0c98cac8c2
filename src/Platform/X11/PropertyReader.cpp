#include "Platform/X11/PropertyReader.h"

#include "Platform/X11/Reply.h"

#include <algorithm>

namespace korvane::platform::x11 {
namespace {

using PropertyReply = Reply<xcb_get_property_reply_t>;

PropertyValue valueOf(xcb_get_property_reply_t &reply)
{
    const auto length = xcb_get_property_value_length(&reply);
    return {reply.type,
            reply.format,
            {static_cast<const std::uint8_t *>(xcb_get_property_value(&reply)), static_cast<std::size_t>(length)}};
}

}  // namespace

void PropertyReader::read(const std::vector<Wanted> &wanted, const Receiver &receiver)
{
    // Read in portions, because thousands of windows with long titles should not be in memory together.
    constexpr std::size_t portion = 256;
    const std::span<const Wanted> all(wanted);
    for (std::size_t i = 0; i < all.size(); i += portion)
        readSome(all.subspan(i, std::min(portion, all.size() - i)), receiver);
}

void PropertyReader::readSome(std::span<const Wanted> wanted, const Receiver &receiver)
{
    std::vector<xcb_get_window_attributes_cookie_t> attributeCookies;
    std::vector<xcb_get_property_cookie_t> cookies;
    for (const Wanted &one : wanted) {
        if (one.attributes)
            attributeCookies.push_back(xcb_get_window_attributes(server, one.window));
        for (std::size_t i = 0; i < propertyCount; ++i)
            if (one.properties[i]) {
                const auto property = static_cast<Property>(i);
                cookies.push_back(xcb_get_property(server, 0, one.window, server[atomOf(property)], XCB_ATOM_ANY, 0,
                                                   longestOf(property)));
            }
    }
    auto attributeCookie = attributeCookies.begin();
    auto cookie = cookies.begin();
    for (const Wanted &one : wanted) {
        bool alive = true;
        if (one.attributes) {
            const Reply<xcb_get_window_attributes_reply_t> reply{
                xcb_get_window_attributes_reply(server, *attributeCookie++, nullptr)};
            alive = reply != nullptr;
            if (reply)
                receiver.attributes(
                    one.window, {reply->override_redirect != 0, reply->map_state == XCB_MAP_STATE_VIEWABLE
                                                                    && reply->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT});
        }
        for (std::size_t i = 0; i < propertyCount; ++i) {
            if (!one.properties[i])
                continue;
            const PropertyReply reply{xcb_get_property_reply(server, *cookie++, nullptr)};
            alive = alive && reply;
            if (alive)
                receiver.property(one.window, static_cast<Property>(i), valueOf(*reply));
        }
        if (!alive)
            receiver.gone(one.window);
    }
}

PropertyReader::Numbers PropertyReader::numbers(WindowId window, Atom property, std::uint32_t longest)
{
    return answer(ask(window, property, longest));
}

xcb_get_property_cookie_t PropertyReader::ask(WindowId window, Atom property, std::uint32_t longest)
{
    return xcb_get_property(server, 0, window, server[property], XCB_ATOM_ANY, 0, longest);
}

PropertyReader::Numbers PropertyReader::answer(xcb_get_property_cookie_t cookie)
{
    const PropertyReply reply{xcb_get_property_reply(server, cookie, nullptr)};
    if (!reply || reply->type == XCB_ATOM_NONE || reply->format != 32)
        return std::nullopt;
    const auto *values = static_cast<const std::uint32_t *>(xcb_get_property_value(reply.get()));
    return std::vector<std::uint32_t>(values, values + xcb_get_property_value_length(reply.get()) / 4);
}

}  // namespace korvane::platform::x11

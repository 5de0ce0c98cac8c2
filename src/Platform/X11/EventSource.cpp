#include "Platform/X11/EventSource.h"

#include "Platform/X11/Reply.h"

#include <glib.h>
#include <new>

namespace korvane::platform::x11 {

// GLib allocates this as C memory, so the member with a constructor is constructed in place.
struct EventSource::State {
    GSource base;
    xcb_connection_t *connection;
    gpointer descriptor;  // null once the connection is lost
    xcb_generic_event_t *next;
    bool closed;
    Calls calls;
};

struct EventSource::Functions {
    static State &of(GSource *source) { return *reinterpret_cast<State *>(source); }

    static bool hasNext(State &state)
    {
        if (!state.next)
            state.next = xcb_poll_for_queued_event(state.connection);
        return state.next != nullptr;
    }

    static gboolean prepare(GSource *source, gint *timeout)
    {
        State &state = of(source);
        *timeout = -1;
        if (!state.descriptor)
            return FALSE;
        // All requests since the last turn are sent together here.
        xcb_flush(state.connection);
        return hasNext(state) || xcb_connection_has_error(state.connection) ? TRUE : FALSE;
    }

    static gboolean check(GSource *source)
    {
        State &state = of(source);
        if (!state.descriptor)
            return FALSE;
        return hasNext(state) || g_source_query_unix_fd(source, state.descriptor) ? TRUE : FALSE;
    }

    static gboolean dispatch(GSource *source, GSourceFunc, gpointer)
    {
        State &state = of(source);
        // A callback may destroy the backend, but this memory must stay until the function returns.
        g_source_ref(source);
        while (!state.closed) {
            auto *event = state.next ? state.next : xcb_poll_for_event(state.connection);
            state.next = nullptr;
            if (!event)
                break;
            const Reply<xcb_generic_event_t> owned(event);
            state.calls.event(*event);
        }
        if (!state.closed)
            state.calls.drained();
        if (!state.closed && state.descriptor && xcb_connection_has_error(state.connection)) {
            // A dead descriptor is always ready, so the loop would never sleep.
            g_source_remove_unix_fd(source, state.descriptor);
            state.descriptor = nullptr;
            state.calls.lost();
        }
        g_source_unref(source);
        return G_SOURCE_CONTINUE;
    }

    static void finalize(GSource *source)
    {
        State &state = of(source);
        std::free(state.next);
        state.calls.~Calls();
    }

    static inline GSourceFuncs table{prepare, check, dispatch, finalize, nullptr, nullptr};
};

EventSource::EventSource(xcb_connection_t *connection, Calls calls)
{
    auto *source = g_source_new(&Functions::table, sizeof(State));
    state = &Functions::of(source);
    state->connection = connection;
    state->next = nullptr;
    state->closed = false;
    new (&state->calls) Calls(std::move(calls));
    state->descriptor = g_source_add_unix_fd(source, xcb_get_file_descriptor(connection), G_IO_IN);
    // Menus and alerts run loops of their own inside a callback, and windows change during that time too.
    g_source_set_can_recurse(source, TRUE);
    g_source_set_name(source, "korvane-x11");
    g_source_attach(source, nullptr);
}

EventSource::~EventSource()
{
    state->closed = true;
    g_source_destroy(&state->base);
    g_source_unref(&state->base);
}

}  // namespace korvane::platform::x11

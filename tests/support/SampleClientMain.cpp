// The program behind SampleClient: one command a line on standard input, one answer a line on standard output. A window
// that is asked to close goes away.
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <map>
#include <memory>
#include <poll.h>
#include <set>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>
#include <xcb/xcb.h>

namespace {

class Client {
public:
    explicit Client(std::string windowClass)
        : name(std::move(windowClass)), connection(xcb_connect(nullptr, nullptr)),
          screen(xcb_setup_roots_iterator(xcb_get_setup(connection)).data)
    {}
    ~Client() { xcb_disconnect(connection); }

    bool connected() const { return xcb_connection_has_error(connection) == 0; }
    int descriptor() const { return xcb_get_file_descriptor(connection); }

    std::string obey(const std::string &line)
    {
        std::istringstream words(line);
        std::string command;
        int window = 0;
        words >> command >> window;
        std::string answer = "done";
        if (command == "create")
            answer = std::to_string(create(window, rest(words)));
        else if (command == "id")
            answer = std::to_string(windows[window]);
        else if (command == "map")
            xcb_map_window(connection, windows[window]);
        else if (command == "unmap")
            withdraw(windows[window]);
        else if (command == "destroy")
            destroy(window);
        else if (command == "title")
            setTitle(windows[window], rest(words));
        else if (command == "remove")
            xcb_delete_property(connection, windows[window], atom(word(words)));
        else if (command == "atoms")
            setAtoms(windows[window], words);
        else if (command == "raw")
            setRaw(windows[window], words);
        else if (command == "refuse")
            refusing.insert(window);
        else if (command == "ask")
            asking.insert(window);
        else if (command == "many")
            openMany(window, std::stoi(word(words)));
        finish();
        return answer;
    }

    void serveEvents()
    {
        while (auto *event = xcb_poll_for_event(connection)) {
            if ((event->response_type & 0x7f) == XCB_CLIENT_MESSAGE) {
                const auto &message = *reinterpret_cast<xcb_client_message_event_t *>(event);
                if (message.data.data32[0] == atom("WM_DELETE_WINDOW"))
                    for (const auto &[number, window] : std::map(windows))
                        if (window == message.window)
                            askedToClose(number);
            }
            std::free(event);
        }
        xcb_flush(connection);
    }

private:
    static constexpr int questionOffset = 1000;

    // A window goes away, unless it refuses or has a question first, which is a window of its own.
    void askedToClose(int number)
    {
        if (refusing.contains(number))
            return;
        if (asking.contains(number))
            xcb_map_window(connection, create(number + questionOffset, "Save changes?"));
        else
            destroy(number);
    }

    static std::string word(std::istringstream &words)
    {
        std::string text;
        words >> text;
        return text;
    }

    static std::string rest(std::istringstream &words)
    {
        std::string text;
        words.ignore(1);
        std::getline(words, text);
        return text;
    }

    xcb_atom_t atom(const std::string &text)
    {
        auto &known = atoms[text];
        if (known == 0) {
            auto *reply = xcb_intern_atom_reply(
                connection, xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(text.size()), text.c_str()),
                nullptr);
            known = reply ? reply->atom : 0;
            std::free(reply);
        }
        return known;
    }

    std::uint32_t create(int number, const std::string &title)
    {
        const auto window = xcb_generate_id(connection);
        windows[number] = window;
        const std::uint32_t values[] = {screen->white_pixel, XCB_EVENT_MASK_STRUCTURE_NOTIFY};
        const auto offset = static_cast<std::int16_t>(20 + number % 20 * 10);
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, offset, offset, 200, 120, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK,
                          values);
        const std::string classes = "instance" + std::string(1, '\0') + name + std::string(1, '\0');
        set(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8, classes);
        const auto own = static_cast<std::uint32_t>(getpid());
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 32, 1,
                            &own);
        const auto deletes = atom("WM_DELETE_WINDOW");
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atom("WM_PROTOCOLS"), XCB_ATOM_ATOM, 32, 1,
                            &deletes);
        setTitle(window, title);
        return window;
    }

    void set(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, int format, const std::string &bytes)
    {
        const auto count = bytes.size() / static_cast<std::size_t>(format / 8);
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, type,
                            static_cast<std::uint8_t>(format), static_cast<std::uint32_t>(count), bytes.data());
    }

    void setTitle(xcb_window_t window, const std::string &title)
    {
        set(window, atom("_NET_WM_NAME"), atom("UTF8_STRING"), 8, title);
        set(window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, title);
    }

    void setAtoms(xcb_window_t window, std::istringstream &words)
    {
        const auto property = atom(word(words));
        std::vector<xcb_atom_t> values;
        for (std::string text = word(words); !text.empty(); text = word(words))
            values.push_back(atom(text));
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_ATOM, 32,
                            static_cast<std::uint32_t>(values.size()), values.data());
    }

    void setRaw(xcb_window_t window, std::istringstream &words)
    {
        const auto property = atom(word(words));
        const auto type = atom(word(words));
        const int format = std::stoi(word(words));
        const std::string digits = word(words);
        std::string bytes;
        for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
            bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
        set(window, property, type, format, bytes);
    }

    void withdraw(xcb_window_t window)
    {
        xcb_unmap_window(connection, window);
        // The manager also has to learn of it when the window was minimised, and so unmapped already.
        xcb_unmap_notify_event_t event{};
        event.response_type = XCB_UNMAP_NOTIFY;
        event.event = screen->root;
        event.window = window;
        xcb_send_event(connection, 0, screen->root,
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char *>(&event));
    }

    void destroy(int number)
    {
        xcb_destroy_window(connection, windows[number]);
        windows.erase(number);
    }

    void openMany(int first, int count)
    {
        for (int number = first; number < first + count; ++number)
            xcb_map_window(connection, create(number, "window " + std::to_string(number)));
    }

    void finish() { std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr)); }

    std::string name;
    xcb_connection_t *connection;
    xcb_screen_t *screen;
    std::map<int, xcb_window_t> windows;
    std::set<int> refusing, asking;
    std::map<std::string, xcb_atom_t> atoms;
};

}  // namespace

int main(int count, char **arguments)
{
    Client client(count > 1 ? arguments[1] : "Sample");
    if (!client.connected())
        return 1;
    std::cout << "ready" << std::endl;
    std::string unread;
    pollfd waiting[] = {{STDIN_FILENO, POLLIN, 0}, {client.descriptor(), POLLIN, 0}};
    while (client.connected() && poll(waiting, 2, -1) >= 0) {
        client.serveEvents();
        if (waiting[0].revents == 0)
            continue;
        char buffer[65536];
        const auto length = read(STDIN_FILENO, buffer, sizeof buffer);
        if (length <= 0)
            return 0;
        unread.append(buffer, static_cast<std::size_t>(length));
        for (auto end = unread.find('\n'); end != std::string::npos; end = unread.find('\n')) {
            std::cout << client.obey(unread.substr(0, end)) << std::endl;
            unread.erase(0, end + 1);
        }
        // Events that came with an answer of the server don't make the descriptor readable again.
        client.serveEvents();
    }
    return 0;
}

#include "tests/support/VirtualDisplay.h"

#include "shared/base/Require.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <thread>
#include <xcb/xtest.h>

namespace morvex {

namespace {

template <class Reply> auto held(Reply* reply) {
    require(reply != nullptr, "the display does not answer");
    return XcbOwned<Reply>(reply);
}

constexpr std::uint16_t width = 1280;
constexpr std::uint16_t height = 1024;

} // namespace

VirtualDisplay::VirtualDisplay() {
    const auto size = std::to_string(width) + "x" + std::to_string(height) + "x24";
    // The server chooses a free display number and prints it when it is ready.
    server_ =
        std::make_unique<ChildProgram>(std::vector<std::string>{"Xvfb", "-displayfd", "1", "-screen", "0",
                                                                size, "-nolisten", "tcp", "-noreset"},
                                       ChildProgram::Environment{});
    name_ = ":" + server_->readLine();
    connection_ = xcb_connect(name_.c_str(), nullptr);
    require(xcb_connection_has_error(connection_) == 0, "Xvfb does not start");
    screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
}

VirtualDisplay::~VirtualDisplay() {
    xcb_disconnect(connection_);
}

void VirtualDisplay::press(xcb_keysym_t symbol, xcb_keysym_t holding) {
    const auto key = find(symbol);
    if (key.isShifted) holding = shift;
    const auto also = holding ? find(holding).code : xcb_keycode_t{0};
    if (also) send(also, true);
    send(key.code, true);
    send(key.code, false);
    if (also) send(also, false);
    xcb_flush(connection_);
}

void VirtualDisplay::type(const std::string& text) {
    for (char letter : text) press(static_cast<unsigned char>(letter));
}

void VirtualDisplay::takePicture(const std::filesystem::path& file) const {
    ChildProgram({"import", "-display", name_, "-window", "root", file.string()}, {}).readLine();
}

xcb_window_t VirtualDisplay::coverScreen() {
    // Like a desktop's own surfaces, it must not be placed by the window manager.
    return openWindow(XCB_CW_OVERRIDE_REDIRECT, 1);
}

xcb_window_t VirtualDisplay::openAnotherProgram() {
    return openWindow(XCB_CW_EVENT_MASK, XCB_EVENT_MASK_KEY_PRESS);
}

xcb_window_t VirtualDisplay::openWindow(std::uint32_t mask, std::uint32_t value) {
    auto window = xcb_generate_id(connection_);
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, screen_->root, 0, 0, width, height, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, mask, &value);
    xcb_map_window(connection_, window);
    xcb_flush(connection_);
    return window;
}

void VirtualDisplay::startWindowManager() {
    const auto settings = folder_.path() / "jwmrc";
    std::ofstream(settings) << "<?xml version=\"1.0\"?><JWM><FocusModel>click</FocusModel></JWM>";
    manager_ = std::make_unique<ChildProgram>(
        std::vector<std::string>{"jwm", "-display", name_, "-f", settings.string()},
        ChildProgram::Environment{});
    const auto name = atom("_NET_SUPPORTING_WM_CHECK");
    const auto isThere = [&] {
        auto asked = xcb_get_property(connection_, 0, screen_->root, name, XCB_ATOM_WINDOW, 0, 1);
        return held(xcb_get_property_reply(connection_, asked, nullptr))->length == 1;
    };
    while (!isThere()) std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

xcb_window_t VirtualDisplay::withKeyboard() {
    return held(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr))->focus;
}

bool VirtualDisplay::isOnTop(xcb_window_t window) {
    const auto top = topWindow();
    while (window != top && window != 0 && window != screen_->root) {
        const XcbOwned<xcb_query_tree_reply_t> place(
            xcb_query_tree_reply(connection_, xcb_query_tree(connection_, window), nullptr));
        if (!place) return false; // it has gone
        window = place->parent;
    }
    return top != 0 && window == top;
}

void VirtualDisplay::startTray() {
    tray_ = xcb_generate_id(connection_);
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, tray_, screen_->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    const auto name = atom("_NET_SYSTEM_TRAY_S0");
    xcb_set_selection_owner(connection_, tray_, name, XCB_CURRENT_TIME);
    tell(screen_->root, XCB_EVENT_MASK_STRUCTURE_NOTIFY, "MANAGER", {XCB_CURRENT_TIME, name, tray_});
}

xcb_window_t VirtualDisplay::itemInTray() {
    const auto request = atom("_NET_SYSTEM_TRAY_OPCODE");
    constexpr std::uint32_t dock = 0;
    while (auto event = nextEvent()) {
        if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE) continue;
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
        if (message.type == request && message.data.data32[1] == dock) return message.data.data32[2];
    }
    return 0;
}

bool VirtualDisplay::heardKey(xcb_window_t window) {
    while (auto event = nextEvent())
        if (event->response_type == XCB_KEY_PRESS &&
            reinterpret_cast<const xcb_key_press_event_t&>(*event).event == window)
            return true;
    return false;
}

void VirtualDisplay::askToClose(xcb_window_t window) {
    tell(window, XCB_EVENT_MASK_NO_EVENT, "WM_PROTOCOLS", {atom("WM_DELETE_WINDOW")});
}

xcb_window_t VirtualDisplay::topWindow() {
    auto reply = held(xcb_query_tree_reply(connection_, xcb_query_tree(connection_, screen_->root), nullptr));
    // Checks the windows from top to bottom; input-only windows do not count.
    const auto* windows = xcb_query_tree_children(reply.get());
    for (auto index = xcb_query_tree_children_length(reply.get()); index-- > 0;) {
        const XcbOwned<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            connection_, xcb_get_window_attributes(connection_, windows[index]), nullptr));
        // A window may go before it is asked about.
        if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
            attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT)
            return windows[index];
    }
    return 0;
}

XcbOwned<xcb_generic_event_t> VirtualDisplay::nextEvent() {
    return XcbOwned<xcb_generic_event_t>(xcb_poll_for_event(connection_));
}

VirtualDisplay::Key VirtualDisplay::find(xcb_keysym_t symbol) {
    const auto* setup = xcb_get_setup(connection_);
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    auto mapping = held(xcb_get_keyboard_mapping_reply(
        connection_, xcb_get_keyboard_mapping(connection_, setup->min_keycode, count), nullptr));
    const auto* symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
    const std::size_t columns = mapping->keysyms_per_keycode;
    for (std::size_t column = 0; column < 2; ++column)
        for (std::size_t row = 0; row < count; ++row)
            if (symbols[row * columns + column] == symbol)
                return {static_cast<xcb_keycode_t>(setup->min_keycode + row), column == 1};
    require(false, "the keyboard has no such key");
    return {};
}

void VirtualDisplay::send(xcb_keycode_t code, bool down) {
    xcb_test_fake_input(connection_, down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, code, XCB_CURRENT_TIME,
                        screen_->root, 0, 0, 0);
}

xcb_atom_t VirtualDisplay::atom(const std::string& name) {
    auto asked = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    return held(xcb_intern_atom_reply(connection_, asked, nullptr))->atom;
}

void VirtualDisplay::tell(xcb_window_t window, std::uint32_t mask, const std::string& type,
                          std::array<std::uint32_t, 5> words) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom(type);
    std::ranges::copy(words, message.data.data32);
    std::array<char, 32> event{};
    static_assert(sizeof message == sizeof event);
    std::memcpy(event.data(), &message, sizeof message);
    xcb_send_event(connection_, 0, window, mask, event.data());
    xcb_flush(connection_);
}

} // namespace morvex

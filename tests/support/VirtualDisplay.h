#pragma once

#include "platform/posix/base/FileDescriptor.h"
#include "tests/support/ChildProgram.h"
#include "tests/support/TemporaryFolder.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <xcb/xcb.h>

namespace morvex {

/// Gives back what the display's library has given.
struct XcbRelease {
    void operator()(void* held) const { std::free(held); }
};

template <class T> using XcbOwned = std::unique_ptr<T, XcbRelease>;

/// A display of the test's own, drawn in memory, and the hands of a person before it. No window manager cares
/// for its windows unless one is started. Needs Xvfb, ImageMagick and JWM.
class VirtualDisplay {
  public:
    VirtualDisplay();
    ~VirtualDisplay();
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    /// As in DISPLAY.
    [[nodiscard]] const std::string& name() const { return name_; }

    /// Presses and releases a key, with Shift or Control where it has to be held.
    void press(xcb_keysym_t key, xcb_keysym_t held = 0);
    /// Types characters of ASCII.
    void type(const std::string& text);

    /// A PNG of the whole screen.
    void takePicture(const std::filesystem::path& file) const;

    /// A window over all of the screen, as of another program that somebody uses.
    xcb_window_t coverScreen();
    /// From now on windows have frames, and one of them has the keyboard.
    void startWindowManager();
    /// A window of another program as large as the screen, which the window manager cares for.
    xcb_window_t openAnotherProgram();
    /// Whether a key was pressed there since it was asked last.
    [[nodiscard]] bool heardKey(xcb_window_t window);
    /// Which window a pressed key goes to.
    [[nodiscard]] xcb_window_t withKeyboard();
    /// Whether nothing is above this window, or above the frame that it is in.
    [[nodiscard]] bool isOnTop(xcb_window_t window);
    /// Becomes the display's own tray, and tells everybody.
    void startTray();
    /// The window of an item that asks to be taken into it; zero while none does.
    [[nodiscard]] xcb_window_t itemInTray();
    /// What the close button of a title bar does.
    void askToClose(xcb_window_t window);
    /// Zero when none is open.
    [[nodiscard]] xcb_window_t topWindow();

    static constexpr xcb_keysym_t tab = 0xff09;
    static constexpr xcb_keysym_t space = ' ';
    static constexpr xcb_keysym_t shift = 0xffe1;
    static constexpr xcb_keysym_t control = 0xffe3;

  private:
    struct Key {
        xcb_keycode_t code = 0;
        bool isShifted = false;
    };

    xcb_window_t openWindow(std::uint32_t mask, std::uint32_t value);
    XcbOwned<xcb_generic_event_t> nextEvent();
    Key find(xcb_keysym_t symbol);
    void send(xcb_keycode_t code, bool down);
    xcb_atom_t atom(const std::string& name);
    void tell(xcb_window_t window, std::uint32_t mask, const std::string& type,
              std::array<std::uint32_t, 5> words);

    TemporaryFolder folder_;
    std::unique_ptr<ChildProgram> server_;
    std::unique_ptr<ChildProgram> manager_;
    std::string name_;
    xcb_connection_t* connection_ = nullptr;
    const xcb_screen_t* screen_ = nullptr;
    xcb_window_t tray_ = 0;
};

} // namespace morvex

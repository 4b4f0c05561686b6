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

/// Frees what the XCB library has allocated.
struct XcbRelease {
    void operator()(void* held) const { std::free(held); }
};

template <class T> using XcbOwned = std::unique_ptr<T, XcbRelease>;

/// A display of the test, drawn in memory, with simulated user input. Windows are not managed unless a window
/// manager is started. Needs Xvfb, ImageMagick and JWM.
class VirtualDisplay {
  public:
    VirtualDisplay();
    ~VirtualDisplay();
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    /// The value for DISPLAY.
    [[nodiscard]] const std::string& name() const { return name_; }

    /// Presses and releases a key, with Shift or Control held if needed.
    void press(xcb_keysym_t key, xcb_keysym_t held = 0);
    /// Types ASCII characters.
    void type(const std::string& text);

    /// A PNG of the whole screen.
    void takePicture(const std::filesystem::path& file) const;

    /// Opens a window over the whole screen, like that of another program in use.
    xcb_window_t coverScreen();
    /// From now on windows have frames, and one of them has the keyboard focus.
    void startWindowManager();
    /// Opens a managed window of another program, as large as the screen.
    xcb_window_t openAnotherProgram();
    /// Whether a key was pressed in the window since the last call.
    [[nodiscard]] bool heardKey(xcb_window_t window);
    /// The window that has the keyboard focus.
    [[nodiscard]] xcb_window_t withKeyboard();
    /// Whether nothing is above this window or the frame around it.
    [[nodiscard]] bool isOnTop(xcb_window_t window);
    /// Becomes the display's tray and announces it.
    void startTray();
    /// The window of an item that asks to be embedded; zero if there is none.
    [[nodiscard]] xcb_window_t itemInTray();
    /// Does what the close button of a title bar does.
    void askToClose(xcb_window_t window);
    /// Zero if no window is open.
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

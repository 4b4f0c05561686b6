#pragma once

#include "foundation/FileDescriptor.h"
#include "tests/support/ChildProgram.h"
#include "tests/support/TemporaryFolder.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <xcb/xcb.h>

namespace morvex {

/// A display of the test's own, drawn in memory, without a window manager, and the hands of a person before
/// it. Needs Xvfb and ImageMagick.
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

    Key find(xcb_keysym_t symbol);
    void send(xcb_keycode_t code, bool down);
    xcb_atom_t atom(const std::string& name);
    void tell(xcb_window_t window, std::uint32_t mask, const std::string& type,
              std::array<std::uint32_t, 5> words);

    TemporaryFolder folder_;
    std::unique_ptr<ChildProgram> server_;
    std::string name_;
    xcb_connection_t* connection_ = nullptr;
    const xcb_screen_t* screen_ = nullptr;
    xcb_window_t tray_ = 0;
};

} // namespace morvex

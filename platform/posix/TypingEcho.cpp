#include "platform/posix/TypingEcho.h"

#include <termios.h>

namespace morvex {

struct TypingEcho::Settings {
    termios values{};

    static std::unique_ptr<const Settings> of(int terminal) {
        Settings read;
        return ::tcgetattr(terminal, &read.values) == 0 ? std::make_unique<const Settings>(read) : nullptr;
    }
};

TypingEcho::TypingEcho(int input) : input_(input), usual_(Settings::of(input)) {}

TypingEcho::~TypingEcho() {
    show();
}

void TypingEcho::hide() {
    if (!usual_) return;
    auto hidden = usual_->values;
    hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    hidden.c_lflag |= ECHONL;
    ::tcsetattr(input_, TCSAFLUSH, &hidden);
}

void TypingEcho::show() {
    if (usual_) ::tcsetattr(input_, TCSANOW, &usual_->values);
}

} // namespace morvex

#pragma once

#include <QLatin1StringView>

namespace morvex {

/// The address of the login service on the system bus (org.freedesktop.login1(5)).
struct Logind {
    static constexpr QLatin1StringView service{"org.freedesktop.login1"};
    static constexpr QLatin1StringView path{"/org/freedesktop/login1"};
    static constexpr QLatin1StringView interface{"org.freedesktop.login1.Manager"};
};

} // namespace morvex

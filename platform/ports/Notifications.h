#pragma once

#include <functional>
#include <string>
#include <vector>

namespace morvex {

/// One message of the desktop, shown beside whatever the person is doing. Best effort: a desktop may show
/// nothing, or no buttons. Main thread only.
///
///     show -> (onAction)? -> withdraw, or the next show, which takes its place
class Notifications {
  public:
    struct Action {
        std::string key; ///< comes back with `onAction`
        std::string label;
    };

    struct Notice {
        std::string title;
        std::string body;
        std::vector<Action> actions;
        std::function<void(const std::string& key)> onAction; ///< a press, once at most
    };

    /// Key of the action that a press of the message itself is; its label may never be seen.
    static constexpr const char* pressedItself = "default";

    virtual ~Notifications() = default;

    virtual void show(Notice notice) = 0;

    /// Afterwards no `onAction` comes any more.
    virtual void withdraw() = 0;
};

} // namespace morvex

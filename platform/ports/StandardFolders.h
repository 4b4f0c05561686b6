#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// The user's well-known folders, as absolute paths. Safe from any thread.
class StandardFolders {
  public:
    virtual ~StandardFolders() = default;

    [[nodiscard]] virtual std::string home() const = 0;
    /// The home folder of this account according to the system, whatever the environment says.
    [[nodiscard]] virtual std::string accountHome() const = 0;
    /// Home folder of another user, for `~name`.
    [[nodiscard]] virtual std::optional<std::string> homeOf(const std::string& user) const = 0;
    /// Returns nothing when there is no desktop folder; never the home folder itself.
    [[nodiscard]] virtual std::optional<std::string> desktop() const = 0;

    /// Where this program keeps its records ("Morvex" and "TalkSpan" below it).
    [[nodiscard]] virtual std::string applicationSupport() const = 0;
    /// Where this program keeps its settings.
    [[nodiscard]] virtual std::string configuration() const = 0;
};

/// Replaces `~` or `~name` at the start of a path by the home folder. The name of an unknown user stays as it
/// is.
std::string expandingTilde(std::string_view path, const StandardFolders& folders);

} // namespace morvex

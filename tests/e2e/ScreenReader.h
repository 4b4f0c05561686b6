#pragma once

#include "tests/support/ChildProgram.h"

#include <QDBusConnection>
#include <QString>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// Reads the windows of all programs of a session as a person does who cannot see them: over the desktop's
/// own accessibility bus. Needs at-spi2-core, and a QCoreApplication.
class ScreenReader {
  public:
    struct Item {
        QString application; ///< its name on the bus
        QString path;
        std::string name;
        bool hasKeyboard = false;
    };

    /// Starts the accessibility bus of the session that these variables belong to. Programs start after it.
    explicit ScreenReader(const ChildProgram::Environment& session);
    ~ScreenReader();
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;

    /// What is on show in the windows, from top to bottom.
    [[nodiscard]] std::vector<Item> read() const;
    /// Whether there is something of this name.
    [[nodiscard]] bool shows(const std::string& name) const;

    [[nodiscard]] const QDBusConnection& bus() const { return *bus_; }

    /// What a pressed key would reach.
    [[nodiscard]] std::optional<Item> withKeyboard() const;

  private:
    void read(const Item& item, std::vector<Item>& into) const;

    std::unique_ptr<ChildProgram> launcher_;
    std::optional<QDBusConnection> bus_;
};

} // namespace morvex

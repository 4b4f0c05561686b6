#pragma once

#include "tests/support/ChildProgram.h"

#include <QDBusConnection>
#include <QString>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// Reads the windows of all programs in a session like a screen reader: over the desktop's accessibility bus.
/// Needs at-spi2-core, and a QCoreApplication.
class ScreenReader {
  public:
    struct Item {
        QString application; ///< the application's name on the bus
        QString path;
        std::string name;
        bool hasKeyboard = false;
    };

    /// Starts the accessibility bus of the session to which these variables belong. Start the programs
    /// afterwards.
    explicit ScreenReader(const ChildProgram::Environment& session);
    ~ScreenReader();
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;

    /// The visible items of the windows, from top to bottom.
    [[nodiscard]] std::vector<Item> read() const;
    /// Whether an item of this name is visible.
    [[nodiscard]] bool shows(const std::string& name) const;

    [[nodiscard]] const QDBusConnection& bus() const { return *bus_; }

    /// The item with the keyboard focus.
    [[nodiscard]] std::optional<Item> withKeyboard() const;

  private:
    void read(const Item& item, std::vector<Item>& into) const;

    std::unique_ptr<ChildProgram> launcher_;
    std::optional<QDBusConnection> bus_;
};

} // namespace morvex

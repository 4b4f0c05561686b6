#pragma once

#include "tests/support/BusService.h"

#include <mutex>
#include <string>
#include <vector>

namespace morvex {

/// The tray of a desktop, on its session bus, and the eyes and hands of a person before it. It collects the
/// items and shows them, as StatusNotifierWatcher and host in one.
class TrayHost {
  public:
    explicit TrayHost(const std::string& bus);

    /// How many items have come.
    [[nodiscard]] std::size_t items();
    /// The pixels of the first one.
    [[nodiscard]] std::string picture();
    [[nodiscard]] std::string toolTip();
    /// Clicks it.
    void press();
    /// Asks it for its menu, as a click with the other button does.
    void askForMenu();

  private:
    using Value = GLibHandle<GVariant, g_variant_unref>;

    GDBusMessage* answer(GDBusMessage* call);
    Value call(const char* interface, const char* method, GVariant* arguments);
    Value property(const char* name);

    std::mutex mutex_;
    std::vector<std::string> items_; ///< their names on the bus
    BusService service_;
};

} // namespace morvex

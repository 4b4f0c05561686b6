#pragma once

#include "tests/support/BusService.h"

#include <mutex>
#include <string>
#include <vector>

namespace morvex {

/// The tray of a desktop on its session bus, with simulated user input. It collects and shows the items, as
/// StatusNotifierWatcher and host in one.
class TrayHost {
  public:
    explicit TrayHost(const std::string& bus);

    /// The number of items that have registered.
    [[nodiscard]] std::size_t items();
    /// The pixels of the first one.
    [[nodiscard]] std::string picture();
    [[nodiscard]] std::string toolTip();
    /// Clicks the first item.
    void press();
    /// Requests its menu, like a click with the other button.
    void askForMenu();

  private:
    using Value = GLibHandle<GVariant, g_variant_unref>;

    GDBusMessage* answer(GDBusMessage* call);
    Value call(const char* interface, const char* method, GVariant* arguments);
    Value property(const char* name);

    std::mutex mutex_;
    std::vector<std::string> items_; ///< bus names
    BusService service_;
};

} // namespace morvex

#pragma once

#include "platform/ports/Tray.h"

#include <QAbstractNativeEventFilter>

#include <cstdint>
#include <functional>

namespace morvex {

/// The tray of an X display that embeds the windows of the items; without an X display there is none. Needs a
/// QGuiApplication. Main thread.
class XembedTray final : public Tray, private QAbstractNativeEventFilter {
  public:
    XembedTray();
    ~XembedTray() override;

    [[nodiscard]] bool isThere() const override;

    Connection onArrival(std::function<void()> slot) override;

  private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

    /// Atoms of the X display.
    std::uint32_t manager_ = 0;
    std::uint32_t tray_ = 0;
    Signal<> arrival_;
};

} // namespace morvex

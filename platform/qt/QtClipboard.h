#pragma once

#include "platform/ports/Clipboard.h"

namespace morvex {

/// The desktop's clipboard. Needs a QGuiApplication.
class QtClipboard final : public Clipboard {
  public:
    void setText(const std::string& text) override;
};

} // namespace morvex

#pragma once

#include "platform/ports/UrlOpener.h"

namespace morvex {

/// Asks the desktop's own table (`x-scheme-handler/<scheme>` in its mimeapps lists) who handles an address,
/// since the usual opening commands report success without anybody.
class DesktopUrlOpener final : public UrlOpener {
  public:
    bool open(const std::string& url) override;
};

} // namespace morvex

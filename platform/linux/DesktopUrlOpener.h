#pragma once

#include "platform/ports/UrlOpener.h"

namespace morvex {

/// Looks up the handler of an address in the desktop's own table (`x-scheme-handler/<scheme>` in its mimeapps
/// lists), since the usual opening commands report success even without a handler.
class DesktopUrlOpener final : public UrlOpener {
  public:
    bool open(const std::string& url) override;
};

} // namespace morvex

#pragma once

#include "platform/ports/UrlOpener.h"

#include <vector>

namespace morvex {

/// Records the addresses that it was asked to open.
class ScriptedUrlOpener final : public UrlOpener {
  public:
    bool open(const std::string& url) override {
        opened.push_back(url);
        return succeeds;
    }

    bool succeeds = true;
    std::vector<std::string> opened;
};

} // namespace morvex

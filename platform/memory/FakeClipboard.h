#pragma once

#include "platform/ports/Clipboard.h"

namespace morvex {

class FakeClipboard final : public Clipboard {
  public:
    void setText(const std::string& given) override { text = given; }

    std::string text;
};

} // namespace morvex

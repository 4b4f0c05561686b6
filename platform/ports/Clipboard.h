#pragma once

#include <string>

namespace morvex {

/// What a person pastes elsewhere. Main thread only.
class Clipboard {
  public:
    virtual ~Clipboard() = default;

    virtual void setText(const std::string& text) = 0;
};

} // namespace morvex

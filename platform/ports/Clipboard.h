#pragma once

#include <string>

namespace morvex {

/// The system's clipboard. Main thread only.
class Clipboard {
  public:
    virtual ~Clipboard() = default;

    virtual void setText(const std::string& text) = 0;
};

} // namespace morvex

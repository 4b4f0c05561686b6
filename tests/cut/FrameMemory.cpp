#include "tests/cut/FrameMemory.h"

#include <cstdint>

namespace morvex {

std::size_t FrameMemory::take(std::span<const char> bytes) {
    std::size_t taken = 0;
    while (taken < bytes.size()) {
        current_ += bytes[taken++];
        if (hasOpened_ ? current_.size() < length() : !current_.ends_with("\r\n\r\n")) continue;
        if (hasOpened_) last_ = current_;
        hasOpened_ = true;
        current_.clear();
        break;
    }
    return taken;
}

std::size_t FrameMemory::length() const {
    const auto at = [this](std::size_t index) { return static_cast<std::uint8_t>(current_[index]); };
    if (current_.size() < 2) return 2;
    std::size_t content = at(1) & 0x7f;
    const std::size_t lengthBytes = content == 127 ? 8 : content == 126 ? 2 : 0;
    const std::size_t head = 2 + lengthBytes + ((at(1) & 0x80) != 0 ? 4 : 0);
    if (current_.size() < head) return head;
    if (lengthBytes > 0) content = 0;
    for (std::size_t i = 0; i < lengthBytes; ++i) content = content << 8 | at(2 + i);
    return head + content;
}

} // namespace morvex

#include "relay/FrameBuffer.h"

#include <algorithm>
#include <utility>

namespace morvex {

void FrameBuffer::append(std::string_view bytes) {
    while (!bytes.empty()) {
        if (pieces_.empty() || pieces_.back().size() == pieces_.back().capacity()) addPiece(bytes.size());
        auto& piece = pieces_.back();
        const auto part = bytes.substr(0, piece.capacity() - piece.size());
        piece += part;
        size_ += part.size();
        bytes.remove_prefix(part.size());
    }
}

void FrameBuffer::addPiece(std::size_t needed) {
    auto& piece = pieces_.emplace_back();
    piece.reserve(std::min(std::max(needed, size_), longestPiece));
    capacity_ += piece.capacity();
}

void FrameBuffer::clear() {
    *this = {};
}

std::string FrameBuffer::take() {
    auto buffer = std::exchange(*this, {});
    // Most frames come in one piece of exactly their size.
    if (buffer.pieces_.size() == 1 && buffer.capacity_ == buffer.size_) return std::move(buffer.pieces_[0]);
    std::string whole;
    whole.reserve(buffer.size_);
    for (auto& piece : buffer.pieces_) {
        whole += piece;
        std::string{}.swap(piece);
    }
    return whole;
}

} // namespace morvex

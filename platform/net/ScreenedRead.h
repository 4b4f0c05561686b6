#pragma once

#include "shared/base/FrameScreen.h"

#include <boost/asio/buffer.hpp>
#include <boost/beast/websocket/error.hpp>
#include <boost/system/error_code.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace morvex {

/// One read of a stream, for `async_compose`; the screen inspects the bytes before the reader gets them.
/// Stream and screen must outlive it.
template <class Stream, class Buffers> class ScreenedRead {
  public:
    ScreenedRead(Stream& stream, FrameScreen& screen, const Buffers& buffers)
        : stream_(stream), screen_(screen), buffers_(buffers) {}

    template <class Self> void operator()(Self& self) {
        // Copied first, since these members move away with `self`.
        auto& stream = stream_;
        const auto buffers = buffers_;
        stream.async_read_some(buffers, std::move(self));
    }

    template <class Self> void operator()(Self& self, boost::system::error_code error, std::size_t bytes) {
        if (!error && !passes(bytes)) error = boost::beast::websocket::error::bad_close_code;
        self.complete(error, error ? 0 : bytes);
    }

  private:
    bool passes(std::size_t bytes) {
        const auto end = boost::asio::buffer_sequence_end(buffers_);
        for (auto at = boost::asio::buffer_sequence_begin(buffers_); at != end; ++at) {
            const boost::asio::mutable_buffer one = *at;
            const auto count = std::min(bytes, one.size());
            if (!screen_.pass({static_cast<std::uint8_t*>(one.data()), count})) return false;
            bytes -= count;
        }
        return true;
    }

    Stream& stream_;
    FrameScreen& screen_;
    Buffers buffers_;
};

} // namespace morvex

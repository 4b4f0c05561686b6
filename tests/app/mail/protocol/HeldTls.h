#pragma once

#include "foundation/OneShot.h"
#include "platform/ports/TlsClient.h"

#include <functional>
#include <stop_token>

namespace morvex {

/// A network on which no attempt to connect ends, unless it is stopped.
class HeldTls final : public TlsClient {
  public:
    Task<Result<std::shared_ptr<TlsConnection>>> connect(std::string, std::uint16_t,
                                                         std::stop_token stop) override {
        ++attempts;
        OneShot<bool> stopped;
        const std::stop_callback<std::function<void()>> interrupt(stop, [&] { stopped.answer(true); });
        co_await stopped.wait();
        co_return fail(NetworkError{Sentence("zastaveno")});
    }

    int attempts = 0;
};

} // namespace morvex

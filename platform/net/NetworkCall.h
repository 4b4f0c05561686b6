#pragma once

#include "foundation/OneShot.h"
#include "foundation/Task.h"
#include "platform/ports/NetworkError.h"

#include <memory>

namespace morvex {

/// Awaits the answer of a network thread. A call that was stopped, or lost because the thread has ended,
/// fails with a `NetworkError`, like every other failure of the network ports.
template <class T> Task<Result<T>> answerOf(std::shared_ptr<OneShot<Result<T>>> shot) {
    auto result = co_await shot->wait();
    if (!result)
        if (const auto* abandoned = result.error().template as<Abandoned>())
            co_return fail(NetworkError{abandoned->popis()});
    co_return result;
}

} // namespace morvex

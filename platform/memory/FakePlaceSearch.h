#pragma once

#include "foundation/OneShot.h"
#include "platform/ports/PlaceSearch.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// Finds the place that the test has put there, whatever is looked for.
class FakePlaceSearch final : public PlaceSearch {
  public:
    Task<Result<std::optional<FoundPlace>>> find(std::string text, std::stop_token stop) override {
        asked.push_back(std::move(text));
        if (hangs) {
            auto shot = std::make_shared<OneShot<bool>>();
            const std::stop_callback stopped(stop, [shot] { shot->answer(true); });
            co_await shot->wait();
        }
        if (stop.stop_requested()) co_return fail(TextError("zrušeno"));
        if (failure) co_return fail(*failure);
        co_return found;
    }

    std::optional<FoundPlace> found;
    std::optional<TextError> failure;
    bool hangs = false; ///< until it is stopped
    std::vector<std::string> asked;
};

} // namespace morvex

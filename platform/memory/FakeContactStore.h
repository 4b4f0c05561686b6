#pragma once

#include "platform/memory/FakePersonalData.h"
#include "platform/ports/ContactStore.h"
#include "shared/base/Try.h"

#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// An address book that finds what the test has put there, whatever is looked for.
class FakeContactStore final : public FakePersonalData<ContactStore> {
  public:
    Task<Result<std::vector<Contact>>> named(std::string name, std::size_t limit,
                                             std::stop_token stop) override {
        asked.emplace_back(std::move(name), limit);
        CO_CHECK(co_await begin(std::move(stop)));
        co_return found;
    }

    std::vector<Contact> found;
    std::vector<std::pair<std::string, std::size_t>> asked; ///< names and limits
};

} // namespace morvex

#pragma once

#include "platform/ports/HttpClient.h"
#include "platform/ports/PlaceSearch.h"

#include <chrono>
#include <cstddef>
#include <string>
#include <utility>

namespace morvex {

/// Asks a Nominatim server for a place. The text goes to that server.
class NominatimSearch final : public PlaceSearch {
  public:
    static constexpr std::chrono::seconds timeLimit{10};
    static constexpr std::size_t replyLimit = std::size_t{64} * 1024;
    /// In bytes; no place has a longer name.
    static constexpr std::size_t longestText = 1024;

    /// `http` outlives this object. `address`: that of the server, without a slash at its end. `version`:
    /// that of this program, which the server is told.
    NominatimSearch(HttpClient& http, std::string address, std::string version)
        : http_(http), address_(std::move(address)), version_(std::move(version)) {}

    Task<Result<std::optional<FoundPlace>>> find(std::string text, std::stop_token stop) override;

    /// Reads the body of a reply.
    static Result<std::optional<FoundPlace>> read(const std::string& body);

  private:
    HttpClient& http_;
    std::string address_;
    std::string version_;
};

} // namespace morvex

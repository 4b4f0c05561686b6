#pragma once

#include "foundation/OneShot.h"
#include "platform/ports/HttpClient.h"

#include <curl/curl.h>

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <utility>

namespace morvex {

/// One HTTP exchange with libcurl. Must not move, since the library holds pointers into it.
class CurlTransfer {
  public:
    CurlTransfer(HttpRequest request, Reply<HttpReply> reply)
        : request_(std::move(request)), reply_(std::move(reply)) {}

    CurlTransfer(const CurlTransfer&) = delete;
    CurlTransfer& operator=(const CurlTransfer&) = delete;

    /// Checks the request and makes the handle that the loop runs. Once, before `handle`.
    Result<void> prepare(const std::string& extraAuthorities);

    [[nodiscard]] CURL* handle() const { return easy_.get(); }

    /// Answers the caller with the final result of the library.
    void finish(CURLcode code);

    /// Has `wake` called, from any thread, when the caller wants the exchange to end.
    void watchStop(std::function<void()> wake) { stopped_.emplace(request_.stop, std::move(wake)); }

    [[nodiscard]] bool isStopped() const { return request_.stop.stop_requested(); }

    /// Answers the caller with a failure.
    void fall(Error error) { reply_(fail(std::move(error))); }

  private:
    [[nodiscard]] bool answeredOtherwise(CURLcode code) const;
    [[nodiscard]] NetworkError failure(CURLcode code) const;

    struct Free {
        void operator()(CURL* easy) const { curl_easy_cleanup(easy); }

        void operator()(CURLU* url) const { curl_url_cleanup(url); }

        void operator()(curl_slist* list) const { curl_slist_free_all(list); }
    };

    template <class Value> void set(CURLoption option, Value value) {
        if (refused_ == CURLE_OK) refused_ = curl_easy_setopt(easy_.get(), option, value);
    }

    Result<void> setAddress();
    Result<void> setHeaders();
    void addHeader(const std::string& line);
    void setMethod();
    void setRules(const std::string& extraAuthorities);
    void setAuthorities(const std::string& extra);
    static std::size_t take(const char* bytes, std::size_t one, std::size_t count, void* transfer);
    static std::size_t takeHeader(const char* bytes, std::size_t one, std::size_t count, void* transfer);
    [[nodiscard]] bool addReplyHeader(std::string_view line);

    HttpRequest request_;
    Reply<HttpReply> reply_;
    HttpReply received_;
    std::size_t headersLength_ = 0;
    bool headersAreOver_ = true; ///< true before the first status line and after the blank line
    bool isFinal_ = false;       ///< the last status was not an interim one (1xx)
    bool tooLong_ = false;
    std::array<char, CURL_ERROR_SIZE> problem_{};
    CURLcode refused_ = CURLE_OK; ///< the error of the first option that the library refused

    std::optional<std::stop_callback<std::function<void()>>> stopped_;
    std::unique_ptr<CURLU, Free> url_;
    std::unique_ptr<curl_slist, Free> headers_;
    std::unique_ptr<CURL, Free> easy_;
};

} // namespace morvex

#pragma once

#include "platform/ports/HttpClient.h"

#include <memory>
#include <string>

namespace morvex {

class CurlLoop;

/// HTTP over libcurl; all exchanges run on one thread of its own. TLS 1.2 or newer; certificate and host name
/// are always verified. No proxies, no user names in addresses. Calls may come from any thread; when the
/// client is destroyed, the running exchanges fail.
class CurlHttpClient final : public HttpClient {
  public:
    /// `extraAuthorities`: certificates (PEM) that are trusted in addition to the system's certificate
    /// folder.
    explicit CurlHttpClient(std::string extraAuthorities = {});
    ~CurlHttpClient() override;

    Task<Result<HttpReply>> send(HttpRequest request) override;

  private:
    std::shared_ptr<CurlLoop> loop_;
};

} // namespace morvex

#pragma once

#include "platform/net/NetworkLimits.h"
#include "platform/ports/TlsClient.h"

#include <memory>
#include <string>

namespace morvex {

class NetworkThread;

/// TLS connections (1.2 or newer; certificate and host name are always verified against the system's
/// authorities), on a thread of their own, so that work for these servers delays no other socket of the
/// program.
///
/// Calls may come from any thread. When the client is destroyed, its connections are reset and all waiting
/// calls fail; its destructor may wait for a name look-up in progress, whose time the system bounds.
class AsioTlsClient final : public TlsClient {
  public:
    AsioTlsClient() : AsioTlsClient(NetworkLimits{}) {}

    /// `extraAuthorities`: certificates (PEM) that are trusted in addition to the system's.
    explicit AsioTlsClient(NetworkLimits limits, std::string extraAuthorities = {});
    ~AsioTlsClient() override;

    Task<Result<std::shared_ptr<TlsConnection>>> connect(std::string host, std::uint16_t port,
                                                         std::stop_token stop) override;

  private:
    std::shared_ptr<NetworkThread> network_;
};

} // namespace morvex

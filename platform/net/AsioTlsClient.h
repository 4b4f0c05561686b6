#pragma once

#include "platform/net/NetworkLimits.h"
#include "platform/ports/TlsClient.h"

#include <memory>
#include <string>

namespace morvex {

class NetworkThread;

/// TLS connections (1.2 or newer; certificate and host name are always verified against the system's
/// authorities), on one thread of its own, so that what a server costs delays no other socket of the program.
///
/// Calls may come from any thread. When the client goes, its connections are reset and all waiting calls
/// fail; its destructor may wait for a name look-up that is under way, which the system bounds.
class AsioTlsClient final : public TlsClient {
  public:
    AsioTlsClient() : AsioTlsClient(NetworkLimits{}) {}

    /// `extraAuthorities`: certificates (PEM) trusted beside the system's.
    explicit AsioTlsClient(NetworkLimits limits, std::string extraAuthorities = {});
    ~AsioTlsClient() override;

    Task<Result<std::shared_ptr<TlsConnection>>> connect(std::string host, std::uint16_t port,
                                                         std::stop_token stop) override;

  private:
    std::shared_ptr<NetworkThread> network_;
};

} // namespace morvex

#include "platform/net/AsioTlsClient.h"

#include "platform/net/NetworkConnection.h"
#include "platform/net/TlsSession.h"
#include "shared/base/SystemTrouble.h"
#include "shared/base/Try.h"

#include <utility>

namespace morvex {

namespace {

/// The handle that the program holds. Waiting calls do not refer to it, so it may be destroyed while they
/// wait.
class AsioTlsConnection final : public TlsConnection {
  public:
    AsioTlsConnection(SharedNetwork network, const std::shared_ptr<TlsSession>& session)
        : network_(std::move(network)), session_(session) {}

    ~AsioTlsConnection() override {
        network_->post([target = session_] {
            if (auto session = target.lock()) session->release();
        });
    }

    Task<Result<void>> send(std::string bytes) override {
        return call<void>(network_, session_, &TlsSession::send, std::move(bytes));
    }

    Task<Result<std::string>> receive() override {
        return call<std::string>(network_, session_, &TlsSession::receive);
    }

    void close() override {
        network_->post([target = session_] {
            if (auto session = target.lock()) session->close();
        });
    }

  private:
    SharedNetwork network_;
    std::weak_ptr<TlsSession> session_;
};

/// Rejects names that the system's look-up would read in another way: an empty name means this computer, and
/// a zero byte cuts the name.
bool isHost(const std::string& host) {
    return !host.empty() && !host.contains('\0');
}

/// Does not refer to the client, which may go while this waits.
Task<Result<std::shared_ptr<TlsConnection>>> open(SharedNetwork network, std::string host, std::uint16_t port,
                                                  std::stop_token stop) {
    if (!isHost(host)) co_return fail(NetworkError{popis(SystemTrouble::badAddress)});
    auto make = [host = std::move(host), port](NetworkThread& thread) -> Result<std::shared_ptr<TlsSession>> {
        TRY(auto* const, tls, thread.tls().get());
        return std::make_shared<TlsSession>(thread, *tls, host, port);
    };
    co_return co_await openConnection<TlsConnection, AsioTlsConnection, TlsSession>(
        std::move(network), std::move(make), std::move(stop));
}

} // namespace

AsioTlsClient::AsioTlsClient(NetworkLimits limits, std::string extraAuthorities)
    : network_(std::make_shared<NetworkThread>("tls", limits, std::move(extraAuthorities))) {}

AsioTlsClient::~AsioTlsClient() {
    network_->stop();
}

Task<Result<std::shared_ptr<TlsConnection>>> AsioTlsClient::connect(std::string host, std::uint16_t port,
                                                                    std::stop_token stop) {
    return open(network_, std::move(host), port, std::move(stop));
}

} // namespace morvex

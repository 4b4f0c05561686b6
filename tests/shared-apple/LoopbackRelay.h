#pragma once

#include "foundation/EventStream.h"
#include "platform/ports/WebSocketClient.h"
#include "shared/wire/RelayMessage.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace morvex::test {

/// A relay for the two devices of one pair, in memory: it checks the signature of a login, tells each device
/// whether the other is there, and forwards envelopes in their order. Safe from any thread; it outlives its
/// sockets.
class LoopbackRelay final : public WebSocketClient {
  public:
    Task<Result<std::shared_ptr<WebSocket>>> connect(WebSocketRequest request, std::stop_token stop) override;

  private:
    class Socket;

    void receive(Socket& from, const RelayMessage& message);
    void logIn(Socket& socket, const RelayMessage::Authenticate& login);
    void leave(Socket& socket);
    /// The socket of the other device, or null.
    Socket* peerOf(const DeviceID& device);

    std::mutex mutex_;
    std::map<DeviceID, Socket*> online_;
};

} // namespace morvex::test

#pragma once

#include "foundation/EventStream.h"
#include "foundation/OneShot.h"
#include "platform/ports/WebSocketClient.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <stop_token>
#include <string>
#include <vector>

namespace morvex {

/// A socket whose other end is the test.
class ScriptedSocket final : public WebSocket {
  public:
    Task<Result<void>> sendText(std::string text) override;
    Task<Result<WebSocketFrame>> receive() override;
    Task<Result<void>> ping() override;

    [[nodiscard]] Reading reading() const override { return reading_; }

    [[nodiscard]] std::stop_token ended() const override { return ended_.get_token(); }

    void close(CloseCode code) override;

    /// The peer sends a message.
    void deliver(std::string text, WebSocketFrame::Kind kind = WebSocketFrame::Kind::text);
    /// The peer breaks the connection.
    void breakWith(std::string text);
    /// The peer answers every waiting ping.
    void pong();
    /// Every waiting ping fails, though the connection stays open.
    void refusePong();
    /// The peer reads nothing: sends wait until the socket ends or `takeSends()` is called.
    void holdSends();
    void takeSends();
    /// Ends the waiting sends with `result`; the socket stays open, and later sends wait, too.
    void answerSends(const Result<void>& result);

    /// This end pauses reading, as a real socket does when too much waits, or resumes it.
    void holdBack();
    void readOn();

    std::vector<std::string> sent;
    std::vector<CloseCode> closed;
    int pings = 0;
    int refusals = 0; ///< number of coming sends that fail, though the connection stays open
    /// Bytes of texts that may wait; that of the request to which the socket was the answer.
    std::size_t sendLimit = WebSocketRequest{}.sendLimit;

  private:
    using Waiting = std::vector<std::shared_ptr<OneShot<Result<void>>>>;

    static void answer(Waiting& waiting, const Result<void>& result);
    void endSends(const Result<void>& result);

    Reading reading_;
    bool open_ = true;
    std::stop_source ended_;
    bool holdsSends_ = false;
    std::string why_ = "spojení je zavřené";
    EventStream<WebSocketFrame> incoming_;
    Waiting waitingPings_;
    Waiting waitingSends_;
    std::size_t waitingBytes_ = 0; ///< of the texts of `waitingSends_`
};

/// Answers connection attempts with the sockets that the test prepared, in order, then refuses. An attempt
/// that is stopped before it begins fails and leaves them to later ones.
class ScriptedSockets final : public WebSocketClient {
  public:
    Task<Result<std::shared_ptr<WebSocket>>> connect(WebSocketRequest request, std::stop_token stop) override;

    /// Prepares the socket for a later attempt.
    std::shared_ptr<ScriptedSocket> layOut();

    std::vector<std::string> urls;                            ///< of all attempts
    std::vector<decltype(WebSocketRequest::headers)> headers; ///< of all attempts

  private:
    std::deque<std::shared_ptr<ScriptedSocket>> next_;
};

} // namespace morvex

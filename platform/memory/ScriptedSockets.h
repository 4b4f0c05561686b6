#pragma once

#include "foundation/EventStream.h"
#include "foundation/OneShot.h"
#include "platform/ports/WebSocketClient.h"

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

    /// What the other end sends.
    void deliver(std::string text, WebSocketFrame::Kind kind = WebSocketFrame::Kind::text);
    /// The other end breaks the connection.
    void breakWith(std::string text);
    /// The other end answers every ping that waits.
    void pong();
    /// Every ping that waits ends with an error, though the connection stands.
    void refusePong();
    /// The other end takes nothing: sends wait until the socket ends or `takeSends()`.
    void holdSends();
    void takeSends();
    /// Ends the sends that wait; the socket stays open, and later sends wait too.
    void answerSends(const Result<void>& result);

    /// This end holds back reading, as one does for which too much waits, or goes on.
    void holdBack();
    void readOn();

    std::vector<std::string> sent;
    std::vector<CloseCode> closed;
    int pings = 0;
    int refusals = 0; ///< so many coming sends fail, though the connection stands

  private:
    using Waiting = std::vector<std::shared_ptr<OneShot<Result<void>>>>;

    static void answer(Waiting& waiting, const Result<void>& result);

    Reading reading_;
    bool open_ = true;
    std::stop_source ended_;
    bool holdsSends_ = false;
    std::string why_ = "spojení je zavřené";
    EventStream<WebSocketFrame> incoming_;
    Waiting waitingPings_;
    Waiting waitingSends_;
};

/// Answers connection attempts with the sockets that the test laid out, then with refusals.
class ScriptedSockets final : public WebSocketClient {
  public:
    Task<Result<std::shared_ptr<WebSocket>>> connect(WebSocketRequest request, std::stop_token stop) override;

    /// The socket of a later attempt.
    std::shared_ptr<ScriptedSocket> layOut();

    std::vector<std::string> urls; ///< of all attempts

  private:
    std::deque<std::shared_ptr<ScriptedSocket>> next_;
};

} // namespace morvex

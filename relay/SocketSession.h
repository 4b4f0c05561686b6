#pragma once

#include "relay/FrameBuffer.h"
#include "relay/Gate.h"
#include "relay/Line.h"
#include "relay/Login.h"
#include "relay/PeerStream.h"
#include "relay/RelayState.h"
#include "relay/Vitals.h"

#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/websocket/stream.hpp>

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// One WebSocket: challenge, login, then frames both ways through the switchboard. It owns itself by its two
/// coroutines, one that reads and one that writes, and ends when both have ended. On the relay's thread.
class SocketSession final : public Line, public std::enable_shared_from_this<SocketSession> {
  public:
    using Request = boost::beast::http::request<boost::beast::http::string_body>;

    SocketSession(PeerStream stream, std::shared_ptr<RelayState> state, Places::Place place,
                  std::string_view clientVersion);
    ~SocketSession() override;
    SocketSession(const SocketSession&) = delete;
    SocketSession& operator=(const SocketSession&) = delete;

    /// Call once, with the request that asked for the WebSocket.
    void start(Request upgrade);
    /// Call periodically: sends pings, and ends sockets that are late or dead.
    void tick(Vitals::Moment now);
    /// Call when the relay stops.
    void goAway();

    void deliver(std::string frame) override;
    [[nodiscard]] std::size_t waiting() const override;
    [[nodiscard]] std::size_t held() const override;

    [[nodiscard]] Prefix site() const override { return place_.origin().site(); }

    void pauseReading() override;
    void resumeReading() override;
    void end(Ending ending) override;

  private:
    using Session = std::shared_ptr<SocketSession>;

    static boost::asio::awaitable<void> readFrames(Session self, Request upgrade);
    static boost::asio::awaitable<void> writeFrames(Session self);
    /// Reads or skips one frame. Returns false when no more frames are to be read.
    boost::asio::awaitable<bool> readFrame();
    /// Skips the excess of a frame that is too long. Returns false when the socket has to end because of it.
    bool isBearable();
    boost::asio::awaitable<bool> writeFrame();
    void takeFrame();
    void logIn(std::string_view frame);
    void sitDown(const Seat& seat);
    void loginFailed(std::size_t cost);
    /// Closes the socket for a reason that is not the device's fault; it may try again later.
    void turnAway(const std::string& reason);
    void refuse(RelayFailure code);
    [[nodiscard]] std::size_t longestFrame() const;
    [[nodiscard]] Vitals::Signs signs();
    void ping();
    void tellNotReading();
    void readingEnded();
    void abort();
    void log(const std::string& event);

    std::shared_ptr<RelayState> state_;
    Places::Place place_;
    boost::beast::websocket::stream<PeerStream, false> socket_;
    Login login_;
    Vitals vitals_;
    boost::beast::flat_buffer step_; ///< the bytes of one read
    FrameBuffer incoming_;
    std::size_t passedOver_ = 0; ///< skipped bytes of the current frame
    std::uint64_t framesRead_ = 0;
    std::deque<std::string> outgoing_;
    std::string onTheWay_; ///< the frame that is being written
    std::size_t waiting_ = 0;
    std::optional<Ending> ending_;
    bool isLoggedIn_ = false;
    bool isReadingPaused_ = false;
    bool isPinging_ = false; ///< a ping or pong is being sent
    Gate mayRead_;
    Gate mayWrite_;
    std::string name_ = "socket"; ///< for the log
};

} // namespace morvex

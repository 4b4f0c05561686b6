#pragma once

#include "relay/PairStore.h"
#include "tests/support/TestPair.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

struct HttpAnswer {
    unsigned status = 0; ///< 0 when the connection was closed without an answer
    std::string body;
};

inline const std::string thisComputer = "127.0.0.1";

/// One call on a connection of its own; waits for the answer.
/// `from` is one of this computer's addresses.
HttpAnswer post(std::uint16_t port, std::string_view path, std::string_view body, bool usesTls = false,
                const std::string& from = thisComputer);
/// Sends the bytes as they are and reads until the relay closes.
std::string exchange(std::uint16_t port, std::string_view bytes);

/// A connection of raw bytes. Every call waits.
class RawSocket {
  public:
    explicit RawSocket(std::uint16_t port);
    ~RawSocket();

    void write(std::string_view bytes);
    /// Up to the empty line, and no byte further.
    std::string readHead();
    std::string readToTheEnd();

  private:
    struct Connection;

    std::unique_ptr<Connection> connection_;
};

/// Lets two new devices pair at the relay.
TestPair pairAt(std::uint16_t port, bool usesTls = false);

/// A store that knows these pairs, whose tokens end then and were used at once.
PairStore storeOf(const std::vector<TestPair>& pairs, Date tokenEnd);

/// One WebSocket of a device. Every call waits; the relay's pings are answered while reading.
class DeviceSocket {
  public:
    explicit DeviceSocket(std::uint16_t port, bool usesTls = false, std::string_view target = "/v1/ws?v=1.4",
                          const std::string& from = thisComputer);
    ~DeviceSocket();

    void write(std::string_view frame);
    /// As `write`, but a connection that ends meanwhile is no failure of the test.
    bool tryToWrite(std::string_view frame);
    /// Nothing when the relay has closed.
    std::optional<std::string> read();
    /// The close code after `read` has given nothing; 1006 when there was none.
    [[nodiscard]] std::uint16_t closeCode() const;
    [[nodiscard]] std::size_t pings() const;
    /// The connection will end with a reset instead of an orderly end.
    void resetOnEnd();

    /// Reads the challenge and answers it.
    void authenticate(const TestPair& pair, const DeviceIdentity& device);
    /// The same, then expects the welcome with this presence.
    void logIn(const TestPair& pair, const DeviceIdentity& device, bool peerOnline);

  private:
    struct Connection;
    template <class Stream> struct Over;

    std::unique_ptr<Connection> connection_;
};

} // namespace morvex

#pragma once

#include "foundation/EventStream.h"
#include "platform/ports/TlsClient.h"

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// A connection whose other end is the test.
class ScriptedTlsConnection final : public TlsConnection {
  public:
    Task<Result<void>> send(std::string bytes) override;
    Task<Result<std::string>> receive() override;
    void close() override;

    /// The peer sends `bytes`, received as one chunk.
    void deliver(std::string bytes) { arrived_.push(std::move(bytes)); }

    /// The peer ends the stream, or breaks the connection with these words.
    void endStream() { arrived_.end(); }

    void breakWith(Sentence words);

    std::vector<std::string> sent;
    bool isClosed = false;
    int received = 0; ///< number of received chunks

  private:
    EventStream<std::string> arrived_;
    std::optional<Sentence> failure_;
};

/// Answers connection attempts with the connections that the test prepared, in order, then refuses.
class ScriptedTls final : public TlsClient {
  public:
    Task<Result<std::shared_ptr<TlsConnection>>> connect(std::string host, std::uint16_t port,
                                                         std::stop_token stop) override;

    /// Prepares the connection for a later attempt.
    std::shared_ptr<ScriptedTlsConnection> layOut();

    std::vector<std::string> asked; ///< `host:port` of each attempt

  private:
    std::deque<std::shared_ptr<ScriptedTlsConnection>> next_;
};

} // namespace morvex

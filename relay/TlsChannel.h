#pragma once

#include "relay/ByteMeter.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/system/error_code.hpp>
#include <openssl/ssl.h>

#include <cstddef>
#include <memory>

namespace morvex {

/// The server's side of TLS on one socket. Records go directly between the library and the socket, and the
/// library holds a buffer only while a record is in progress: an idle connection costs little more than its
/// keys.
///
/// No call blocks. Each does what the socket allows now, at most one record, so that a busy peer does not
/// starve the others. A call that could not proceed has to be repeated with the same bytes when the socket is
/// ready. Owned by the connection, which also owns socket and meter. On the relay's thread.
class TlsChannel {
  public:
    enum class Need { nothing, readable, writable };

    /// If `need` is set, nothing has happened yet. Otherwise there is an error, or `bytes` have been
    /// transferred.
    struct Outcome {
        Need need = Need::nothing;
        boost::system::error_code error{};
        std::size_t bytes = 0;
    };

    /// The context must outlive the channel.
    TlsChannel(boost::asio::ssl::context& context, boost::asio::ip::tcp::socket& socket, ByteMeter& meter);
    TlsChannel(const TlsChannel&) = delete;
    TlsChannel& operator=(const TlsChannel&) = delete;

    /// Must come first; repeat it until it needs nothing more.
    Outcome handshake();
    /// The error is `eof` when the peer has sent its closing alert (RFC 8446, section 6.1), and
    /// `stream_truncated` when the connection ended without one.
    Outcome read(boost::asio::mutable_buffer buffer);
    Outcome write(boost::asio::const_buffer buffer);
    /// Sends the closing alert. Does not wait for the peer's.
    Outcome sayEnd();

  private:
    struct Free {
        void operator()(SSL* ssl) const { SSL_free(ssl); }
    };

    Outcome outcomeOf(int result, std::size_t bytes = 0);

    static BIO_METHOD* bioMethod();
    static int sendBytes(BIO* bio, const char* bytes, int size);
    static int receiveBytes(BIO* bio, char* bytes, int size);
    static long control(BIO* bio, int command, long number, void* pointer);

    boost::asio::ip::tcp::socket& socket_;
    ByteMeter& meter_;
    boost::system::error_code socketError_; ///< the last error that the library got from the socket
    std::unique_ptr<SSL, Free> ssl_;
};

} // namespace morvex

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

/// The server's side of TLS on one socket. Records go straight between the library and the socket, and the
/// library holds a buffer only while a record is under way: an idle connection costs its keys and little
/// else.
///
/// No call waits. Each does what the socket allows now, one record at most, so that a busy peer leaves their
/// turn to the others; what could not be done is called again, with the same bytes, once the socket is ready.
/// Owned by the connection, which also owns socket and meter. On the relay's thread.
class TlsChannel {
  public:
    enum class Need { nothing, readable, writable };

    /// With a need nothing has happened yet. Otherwise there is an error, or so many bytes have passed.
    struct Outcome {
        Need need = Need::nothing;
        boost::system::error_code error{};
        std::size_t bytes = 0;
    };

    /// The context outlives the channel.
    TlsChannel(boost::asio::ssl::context& context, boost::asio::ip::tcp::socket& socket, ByteMeter& meter);
    TlsChannel(const TlsChannel&) = delete;
    TlsChannel& operator=(const TlsChannel&) = delete;

    /// Comes first, until it needs nothing more.
    Outcome handshake();
    /// The error is `eof` when the peer has said that it ends (RFC 8446, section 6.1), and `stream_truncated`
    /// when it ended without a word.
    Outcome read(boost::asio::mutable_buffer buffer);
    Outcome write(boost::asio::const_buffer buffer);
    /// Tells the peer that nothing more comes. Its own farewell is not waited for.
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
    boost::system::error_code socketError_; ///< the last one that the library heard of
    std::unique_ptr<SSL, Free> ssl_;
};

} // namespace morvex

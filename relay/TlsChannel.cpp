#include "relay/TlsChannel.h"

#include "platform/posix/base/SocketBytes.h"

#include <boost/asio/error.hpp>
#include <boost/asio/ssl/error.hpp>
#include <openssl/bio.h>
#include <openssl/err.h>

#include <cerrno>
#include <new>

namespace morvex {

namespace asio = boost::asio;

namespace {

bool isForLater(int number) {
    return number == EAGAIN || number == EWOULDBLOCK || number == EINTR;
}

} // namespace

TlsChannel::TlsChannel(asio::ssl::context& context, asio::ip::tcp::socket& socket, ByteMeter& meter)
    : socket_(socket), meter_(meter), ssl_(SSL_new(context.native_handle())) {
    auto* bio = BIO_new(bioMethod());
    if (!ssl_ || !bio) throw std::bad_alloc();
    BIO_set_data(bio, this);
    BIO_set_init(bio, 1);
    SSL_set_bio(ssl_.get(), bio, bio);
    SSL_set_accept_state(ssl_.get());
}

TlsChannel::Outcome TlsChannel::handshake() {
    ERR_clear_error();
    return outcomeOf(SSL_do_handshake(ssl_.get()));
}

TlsChannel::Outcome TlsChannel::read(asio::mutable_buffer buffer) {
    if (buffer.size() == 0) return {};
    ERR_clear_error();
    std::size_t count = 0;
    const int result = SSL_read_ex(ssl_.get(), buffer.data(), buffer.size(), &count);
    return outcomeOf(result, count);
}

TlsChannel::Outcome TlsChannel::write(asio::const_buffer buffer) {
    if (buffer.size() == 0) return {};
    ERR_clear_error();
    std::size_t count = 0;
    const int result = SSL_write_ex(ssl_.get(), buffer.data(), buffer.size(), &count);
    return outcomeOf(result, count);
}

TlsChannel::Outcome TlsChannel::sayEnd() {
    ERR_clear_error();
    // 0 means that the peer's closing alert is still missing, which is fine.
    const int result = SSL_shutdown(ssl_.get());
    return result < 0 ? outcomeOf(result) : Outcome{};
}

TlsChannel::Outcome TlsChannel::outcomeOf(int result, std::size_t bytes) {
    switch (SSL_get_error(ssl_.get(), result)) {
    case SSL_ERROR_NONE:
        return {.bytes = bytes};
    case SSL_ERROR_WANT_READ:
        return {.need = Need::readable};
    case SSL_ERROR_WANT_WRITE:
        return {.need = Need::writable};
    case SSL_ERROR_ZERO_RETURN:
        return {.error = asio::error::eof};
    case SSL_ERROR_SYSCALL:
        return {.error = socketError_};
    default:
        break;
    }
    const auto code = ERR_get_error();
    // Errors left in the thread's queue would be taken for errors of the next call, or of other cryptography.
    ERR_clear_error();
    return {.error = {static_cast<int>(code), asio::error::get_ssl_category()}};
}

BIO_METHOD* TlsChannel::bioMethod() {
    static const auto method = [] {
        auto* made = BIO_meth_new(BIO_get_new_index() | BIO_TYPE_SOURCE_SINK, "socket of a device");
        if (!made) throw std::bad_alloc();
        BIO_meth_set_write(made, sendBytes);
        BIO_meth_set_read(made, receiveBytes);
        BIO_meth_set_ctrl(made, control);
        return made;
    }();
    return method;
}

int TlsChannel::sendBytes(BIO* bio, const char* bytes, int size) {
    auto& self = *static_cast<TlsChannel*>(BIO_get_data(bio));
    BIO_clear_retry_flags(bio);
    const auto sent = sendNow(self.socket_.native_handle(), bytes, static_cast<std::size_t>(size));
    if (sent >= 0) {
        self.meter_.bytesWritten += static_cast<std::uint64_t>(sent);
    } else if (isForLater(errno)) {
        BIO_set_retry_write(bio);
    } else {
        self.socketError_.assign(errno, boost::system::system_category());
    }
    return static_cast<int>(sent);
}

int TlsChannel::receiveBytes(BIO* bio, char* bytes, int size) {
    auto& self = *static_cast<TlsChannel*>(BIO_get_data(bio));
    BIO_clear_retry_flags(bio);
    const auto received = receiveNow(self.socket_.native_handle(), bytes, static_cast<std::size_t>(size));
    if (received > 0) {
        self.meter_.bytesRead += static_cast<std::uint64_t>(received);
    } else if (received == 0) {
        self.socketError_ = asio::ssl::error::stream_truncated;
    } else if (isForLater(errno)) {
        BIO_set_retry_read(bio);
    } else {
        self.socketError_.assign(errno, boost::system::system_category());
    }
    return static_cast<int>(received);
}

long TlsChannel::control(BIO*, int command, long, void*) {
    // Nothing is buffered here, so a flush succeeds without work. All other commands are unsupported.
    return command == BIO_CTRL_FLUSH ? 1 : 0;
}

} // namespace morvex

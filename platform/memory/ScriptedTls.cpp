#include "platform/memory/ScriptedTls.h"

#include <utility>

namespace morvex {

Task<Result<void>> ScriptedTlsConnection::send(std::string bytes) {
    if (failure_) co_return fail(NetworkError{*failure_});
    sent.push_back(std::move(bytes));
    co_return Result<void>{};
}

Task<Result<std::string>> ScriptedTlsConnection::receive() {
    auto bytes = co_await arrived_.next();
    if (bytes) {
        ++received;
        co_return *std::move(bytes);
    }
    if (failure_) co_return fail(NetworkError{*failure_});
    co_return std::string();
}

void ScriptedTlsConnection::close() {
    isClosed = true;
    breakWith("Spojení je zavřené."_sentence);
}

void ScriptedTlsConnection::breakWith(Sentence words) {
    if (!failure_) failure_ = std::move(words);
    arrived_.end();
}

Task<Result<std::shared_ptr<TlsConnection>>> ScriptedTls::connect(std::string host, std::uint16_t port,
                                                                  std::stop_token) {
    asked.push_back(std::move(host) + ":" + std::to_string(port));
    if (next_.empty()) co_return fail(NetworkError{Sentence("spojení odmítnuto")});
    std::shared_ptr<TlsConnection> connection = next_.front();
    next_.pop_front();
    co_return connection;
}

std::shared_ptr<ScriptedTlsConnection> ScriptedTls::layOut() {
    return next_.emplace_back(std::make_shared<ScriptedTlsConnection>());
}

} // namespace morvex

#include "app/mail/protocol/MacMailConnection.h"

#include "app/mail/protocol/MacMailOnce.h"
#include "app/mail/protocol/MacMailProtocolError.h"
#include "foundation/EitherStop.h"
#include "shared/base/Try.h"
#include "shared/base/Utf8.h"

#include <algorithm>
#include <chrono>
#include <string_view>
#include <utility>

namespace morvex {

namespace {

using namespace std::chrono_literals;

constexpr Clock::Duration stepLimit = 15s;
constexpr Clock::Duration literalLimit = 60s;

Error asMailError(const Error& error) {
    if (error.as<StreamTooLong>()) return MacMailProtocolError::protocolError(error.popis());
    return MacMailProtocolError::connection(error.popis());
}

MacMailProtocolError cancelled() {
    return MacMailProtocolError::connection("Spojení bylo zrušeno."_sentence);
}

std::string_view trimLineEnds(std::string_view line) {
    constexpr std::string_view ends = "\r\n";
    const auto begin = line.find_first_not_of(ends);
    if (begin == std::string_view::npos) return {};
    return line.substr(begin, line.find_last_not_of(ends) + 1 - begin);
}

} // namespace

MacMailConnection::MacMailConnection(MailServices services, std::string host, std::uint16_t port,
                                     std::stop_token stop)
    : services_(services), host_(std::move(host)), port_(port), stop_(std::move(stop)) {}

Task<Result<void>> MacMailConnection::otevrit() {
    auto& clock = services_.clock;
    auto once = std::make_shared<MacMailOnce>();
    std::stop_source late;
    const EitherStop either(stop_, late.get_token());
    const auto timer = clock.at(clock.sinceBoot() + stepLimit, [once, late]() mutable {
        if (once->first()) late.request_stop();
    });
    auto connection = co_await services_.tls.connect(host_, port_, either.token());
    clock.forget(timer);
    if (!once->first())
        co_return failWith(MacMailProtocolError::connection("Server se do 15 sekund nepřipojil."_sentence));
    if (!connection) co_return failWith(asMailError(connection.error()));
    connection_ = *std::move(connection);
    lines_.emplace(connection_);
    interrupt_.emplace(stop_, [open = connection_] { open->close(); });
    co_return Result<void>{};
}

Task<Result<void>> MacMailConnection::send(std::string line) {
    if (!isOpen()) co_return failWith(cancelled());
    line += "\r\n";
    co_return co_await within(stepLimit, "Server nepřijal data."_sentence,
                              connection_->send(std::move(line)));
}

Task<Result<std::string>> MacMailConnection::receive(std::size_t longest) {
    if (!isOpen()) co_return failWith(cancelled());
    CO_TRY(const auto, line,
           co_await within(stepLimit, "Server neodpověděl."_sentence, lines_->line(longest)));
    co_return repairUtf8(trimLineEnds(line));
}

Task<Result<std::string>> MacMailConnection::cist(std::size_t count) {
    if (!isOpen()) co_return failWith(cancelled());
    const auto deadline = services_.clock.sinceBoot() + literalLimit;
    std::string bytes;
    bytes.reserve(count);
    while (bytes.size() < count) {
        const auto left = deadline - services_.clock.sinceBoot();
        CO_TRY(const auto, more,
               co_await within(std::min(stepLimit, left), "Server neodpověděl."_sentence,
                               lines_->bytes(count - bytes.size())));
        bytes += more;
    }
    co_return bytes;
}

void MacMailConnection::zavrit() {
    interrupt_.reset();
    lines_.reset();
    if (auto connection = std::exchange(connection_, nullptr)) connection->close();
}

template <class T>
Task<Result<T>> MacMailConnection::within(Clock::Duration limit, Sentence words, Task<Result<T>> step) {
    auto& clock = services_.clock;
    auto once = std::make_shared<MacMailOnce>();
    const auto timer = clock.at(clock.sinceBoot() + limit, [once, open = connection_] {
        if (once->first()) open->close();
    });
    auto result = co_await std::move(step);
    clock.forget(timer);
    if (!once->first()) co_return failWith(MacMailProtocolError::connection(std::move(words)));
    if (!result) co_return failWith(asMailError(result.error()));
    co_return result;
}

std::unexpected<Error> MacMailConnection::failWith(Error reason) {
    zavrit();
    if (stop_.stop_requested()) return fail(cancelled());
    return fail(std::move(reason));
}

} // namespace morvex

#include "app/mail/protocol/MacIMAPClient.h"
#include "fuzz/MailServerWords.h"
#include "shared/base/Require.h"
#include "shared/base/Utf8.h"

#include <cstdint>
#include <string_view>

namespace {

using namespace morvex;

/// The value of a call that must end, since its server has ended the connection.
template <class T> std::optional<T> valueOf(MailServerWords& words, Task<Result<T>> call) {
    auto ended = words.executor.run(std::move(call));
    require(ended.has_value(), "a call does not end");
    if (*ended) return *std::move(*ended);
    require(isValidUtf8(ended->error().popis().czech()), "the words of a failure are no text");
    return std::nullopt;
}

void requireAsked(const MacIMAPMessage& message) {
    require(message.uid >= 1 && message.uid <= 3, "a message that nobody asked for is listed");
    for (const auto* text : {&message.from, &message.subject, &message.date})
        require(isValidUtf8(*text), "a field of a message is no text");
}

} // namespace

/// The words of an IMAP server, from its greeting to its farewell.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    MailServerWords words({reinterpret_cast<const char*>(data), size});
    MacIMAPClient client(words.services, "imap.b.cz", "jana@b.cz", "p");
    auto loggedIn = words.executor.run(client.login());
    require(loggedIn.has_value(), "a login does not end");
    if (const auto count = valueOf(words, client.select())) require(*count >= 0, "a count is negative");
    if (const auto uids = valueOf(words, client.search(false)))
        for (const auto uid : *uids) require(uid > 0, "a UID is none");
    if (const auto messages = valueOf(words, client.fetchHeaders({1, 2, 3})))
        for (const auto& message : *messages) requireAsked(message);
    if (const auto body = valueOf(words, client.fetchBody(1)))
        require(!*body || isValidUtf8(**body), "a body is no text");
    require(words.executor.run(client.logout()), "a logout does not end");
    require(words.clock.waiting() == 0, "a timer is left behind");
    return 0;
}

#include "app/mail/protocol/MacSMTPClient.h"
#include "fuzz/MailServerWords.h"
#include "shared/base/Require.h"
#include "shared/base/Utf8.h"

#include <cstdint>

/// The words of an SMTP server, from its greeting to its farewell.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    MailServerWords words({reinterpret_cast<const char*>(data), size});
    MacSMTPClient client(words.services, "smtp.b.cz", "jana@b.cz", "p", "jana@b.cz", "Jana");
    const auto sent = words.executor.run(client.send("petr@c.cz", "a", "b"));
    require(sent.has_value(), "a sending does not end");
    require(*sent || isValidUtf8(sent->error().popis().czech()), "the words of a failure are no text");
    require(!*sent || words.server->sent.size() == 10, "a sending was cut short");
    require(words.server->isClosed, "a connection stays open");
    require(words.clock.waiting() == 0, "a timer is left behind");
    return 0;
}

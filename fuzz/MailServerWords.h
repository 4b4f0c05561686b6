#pragma once

#include "app/mail/protocol/MailServices.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/ScriptedTls.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace morvex {

/// A mail server that says an input and then ends the connection.
struct MailServerWords {
    ManualExecutor executor;
    ManualClock clock;
    ScriptedTls tls;
    std::shared_ptr<ScriptedTlsConnection> server = tls.layOut();
    MailServices services{tls, clock, executor};

    /// The first byte says in pieces of what length the others arrive.
    explicit MailServerWords(std::string_view input) {
        const std::size_t length = input.empty() ? 1 : 1 + static_cast<unsigned char>(input.front());
        for (input = input.substr(std::min<std::size_t>(input.size(), 1)); !input.empty();
             input.remove_prefix(std::min(length, input.size())))
            server->deliver(std::string(input.substr(0, length)));
        server->endStream();
    }
};

} // namespace morvex

#pragma once

#include "app/mail/protocol/MailServices.h"
#include "foundation/ThreadExecutor.h"
#include "tests/support/RealMailServers.h"

#include MORVEX_BASICS

#include <memory>

namespace morvex {

/// Real mail servers of the host "localhost", and what the program reaches them with.
struct RealMail {
    TestAuthority authority;
    TestAuthority::Identity identity = authority.issue("DNS:localhost");
    RealImapServer imap{identity};
    RealSmtpServer smtp{identity};
    std::unique_ptr<SystemClock> clock = SystemClock::create().value();
    ThreadExecutor main{"main"};
    ThreadExecutor workers{"workers"};
    AsioTlsClient tls{NetworkLimits{}, authority.certificate()};
    OtherPorts ports{tls, {{993, imap.port()}, {465, smtp.port()}}};

    [[nodiscard]] MailServices services() { return {ports, *clock, workers}; }
};

} // namespace morvex

#pragma once

#include "phone/Inbox.h"
#include "phone/Keyboard.h"
#include "phone/Options.h"
#include "phone/PhoneError.h"
#include "phone/PhoneRecords.h"
#include "phone/PhoneSettings.h"
#include "phone/PhoneTasks.h"
#include "phone/Terminal.h"
#include "platform/ports/HttpClient.h"
#include "shared-apple/IdentityStore.h"
#include "shared-apple/SecureLink.h"

#include <optional>
#include <string>

namespace morvex {

/// What the commands work with; all of it outlives them. Everything runs on the link's executor.
struct Phone {
    Options options;
    SecureLink::Services link;
    HttpClient& http;
    IdentityStore& store;
    PhoneSettings& settings;
    PhoneRecords& records;
    PhoneTasks& tasks;
    Inbox& inbox;
    Keyboard& keyboard;
    Terminal& terminal;

    [[nodiscard]] Date now() const { return link.relay.clock.now(); }

    /// One more line comes, unless one is on its way: a second one would come while nobody waits for it.
    void requestLine() const {
        if (inbox.expectLine()) keyboard.requestLine();
    }

    /// To be told of each line of the user, before anything is written.
    void lineArrived() const {
        if (keyboard.isInteractive()) terminal.answered();
    }

    /// A change stands although the Mac could not be told of it.
    void noteKept() const { terminal.note("Tady je to uložené; Mac to dostane při příštím spojení."); }

    [[nodiscard]] Clock::Duration deadline(Clock::Duration limit) const {
        return link.relay.clock.sinceBoot() + limit;
    }
};

/// What `help` and `--version` print; nothing for the commands that need a phone.
std::optional<std::string> plainAnswer(const Options& options);

/// Runs the command of the options to its end, tells what went wrong, and gives how the program ends.
Task<ExitCode> runCommand(Phone& phone);

} // namespace morvex

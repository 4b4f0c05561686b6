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
#include "platform/ports/LocalTime.h"
#include "shared-apple/IdentityStore.h"
#include "shared-apple/SecureLink.h"

#include <optional>
#include <string>

namespace morvex {

/// What the commands need; all of it must outlive them. Everything runs on the link's executor.
struct Phone {
    Options options;
    SecureLink::Services link;
    HttpClient& http;
    LocalTime& localTime;
    IdentityStore& store;
    PhoneSettings& settings;
    PhoneRecords& records;
    PhoneTasks& tasks;
    Inbox& inbox;
    Keyboard& keyboard;
    Terminal& terminal;

    [[nodiscard]] Date now() const { return link.relay.clock.now(); }

    /// In which times are shown.
    [[nodiscard]] TimeZone zone() const { return localTime.zone(); }

    /// Requests one more line, unless one is already requested: a second one would arrive while nobody waits
    /// for it.
    void requestLine() const {
        if (inbox.expectLine()) keyboard.requestLine();
    }

    /// Call for each line of the user, before anything is written.
    void lineArrived() const {
        if (keyboard.isInteractive()) terminal.answered();
    }

    /// Tells the user that a change was stored here although the Mac could not be told.
    void noteKept() const { terminal.note("Tady je to uložené; Mac to dostane při příštím spojení."); }

    [[nodiscard]] Clock::Duration deadline(Clock::Duration limit) const {
        return link.relay.clock.sinceBoot() + limit;
    }
};

/// The output of `help` and `--version`; nothing for commands that need a phone.
std::optional<std::string> plainAnswer(const Options& options);

/// Runs the command of the options, reports failures, and returns the exit code.
Task<ExitCode> runCommand(Phone& phone);

} // namespace morvex

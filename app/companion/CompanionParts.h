#pragma once

#include "app/approvals/Schvalovani.h"
#include "app/companion/Bdelost.h"
#include "app/companion/Companion.h"
#include "app/companion/LinkEvents.h"
#include "app/companion/OwnKeys.h"
#include "app/companion/PairingFlow.h"
#include "app/companion/PhoneCalls.h"
#include "app/companion/StatusSync.h"
#include "app/companion/ToolGate.h"
#include "app/features/FeatureContext.h"
#include "foundation/TaskScope.h"

namespace morvex {

/// The parts of a companion. Each one uses those above it and is destroyed before them, so the order matters.
struct Companion::Parts {
    Parts(Companion& companion, CompanionServices given);

    CompanionServices services;
    CompanionState state;
    TaskScope scope;
    Schvalovani schvalovani;
    Bdelost bdelost;
    MacIntegrationSettings integrations;
    ToolTable tools;
    ToolGate gate;
    PhoneInbox inbox;
    PhoneLink phone;
    FeatureContext context;
    StatusSync status;
    PhoneCalls calls;
    OwnKeys keys;
    LinkEvents events;
    PairingFlow parovani;
};

} // namespace morvex

#pragma once

#include "phone/Attendant.h"
#include "phone/Phone.h"
#include "phone/PhoneSession.h"

#include <string>
#include <vector>

/// The commands for the settings that the Mac follows. A change is stored here before it is sent. Secrets are
/// asked for or read from the input, one line each, since every user of the computer can see the words of a
/// command line.
namespace morvex::commands {

/// Sends the OpenAI key; the line "-" removes it.
Task<Result<void>> key(Phone& phone, PhoneSession& session, Attendant& attendant);

/// `words` after "preferences": none, "language CODE", "voice NAME", "place NAME ADDRESS", "place NAME".
Task<Result<void>> preferences(Phone& phone, PhoneSession& session, Attendant& attendant,
                               std::vector<std::string> words);

/// `words` after "apps": "list", "add NAME ADDRESS", "remove NAME".
Task<Result<void>> apps(Phone& phone, PhoneSession& session, Attendant& attendant,
                        std::vector<std::string> words);

/// Shows what is stored here; needs no Mac. Tokens are not shown.
Result<void> showPreferences(Phone& phone);
Result<void> showApps(Phone& phone);

} // namespace morvex::commands

#pragma once

#include "phone/Attendant.h"
#include "phone/Phone.h"
#include "phone/PhoneSession.h"

#include <string>
#include <vector>

/// The commands that set what the Mac follows of this phone. A change is kept here before it is sent. Secrets
/// are asked for or read from the input, one line each, since the words of a command line can be seen by
/// every user of the computer.
namespace morvex::commands {

/// Hands the OpenAI key over; the line "-" takes it away again.
Task<Result<void>> key(Phone& phone, PhoneSession& session, Attendant& attendant);

/// `words` behind "preferences": none, "language CODE", "voice NAME", "place NAME ADDRESS", "place NAME".
Task<Result<void>> preferences(Phone& phone, PhoneSession& session, Attendant& attendant,
                               std::vector<std::string> words);

/// `words` behind "apps": "list", "add NAME ADDRESS", "remove NAME".
Task<Result<void>> apps(Phone& phone, PhoneSession& session, Attendant& attendant,
                        std::vector<std::string> words);

/// What is kept here; needs no Mac. Tokens are not shown.
Result<void> showPreferences(Phone& phone);
Result<void> showApps(Phone& phone);

} // namespace morvex::commands

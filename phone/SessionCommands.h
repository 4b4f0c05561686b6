#pragma once

#include "phone/Attendant.h"
#include "phone/Phone.h"
#include "phone/PhoneSession.h"

#include <string>

/// The commands that talk to the Mac. They get a started session and return the failure that decides the exit
/// code.
namespace morvex::commands {

Task<Result<void>> status(Phone& phone, PhoneSession& session, Attendant& attendant);
Task<Result<void>> tools(Phone& phone, PhoneSession& session, Attendant& attendant);
Task<Result<void>> call(Phone& phone, PhoneSession& session, Attendant& attendant);
/// The Mac's tasks known to this phone, after it has received all missed changes.
Task<Result<void>> tasks(Phone& phone, PhoneSession& session, Attendant& attendant);
Task<Result<void>> watch(Phone& phone, PhoneSession& session, Attendant& attendant);
Task<Result<void>> approve(Phone& phone, PhoneSession& session, Attendant& attendant);

/// Calls a tool once: prints its result, or returns its refusal as a failure. Arguments that are not a JSON
/// object are wrong usage.
Task<Result<void>> callTool(Phone& phone, PhoneSession& session, Attendant& attendant, std::string name,
                            std::string argumentsJSON);

} // namespace morvex::commands

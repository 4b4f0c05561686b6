#pragma once

#include "phone/Attendant.h"
#include "phone/Phone.h"
#include "phone/PhoneSession.h"

#include <string>

/// The commands that talk to the Mac. They get a started session and give the failure that decides how the
/// program ends.
namespace morvex::commands {

Task<Result<void>> status(Phone& phone, PhoneSession& session, Attendant& attendant);
Task<Result<void>> tools(Phone& phone, PhoneSession& session, Attendant& attendant);
Task<Result<void>> call(Phone& phone, PhoneSession& session, Attendant& attendant);
/// The tasks of the Mac that this phone knows of, once it has heard of all the changes that it missed.
Task<Result<void>> tasks(Phone& phone, PhoneSession& session, Attendant& attendant);
Task<Result<void>> watch(Phone& phone, PhoneSession& session, Attendant& attendant);
Task<Result<void>> approve(Phone& phone, PhoneSession& session, Attendant& attendant);

/// One call of a tool: its result to the terminal, its refusal as a failure. Arguments that are no JSON
/// object are wrong usage.
Task<Result<void>> callTool(Phone& phone, PhoneSession& session, Attendant& attendant, std::string name,
                            std::string argumentsJSON);

} // namespace morvex::commands

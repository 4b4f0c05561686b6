#pragma once

#include "phone/Attendant.h"
#include "phone/Phone.h"
#include "phone/PhoneSession.h"

#include <optional>
#include <string>
#include <vector>

/// The commands `notes` and `summaries`. They change the phone's records without a Mac and deliver the
/// changes afterwards.
namespace morvex::commands {

enum class RecordKind { notes, summaries };

/// What a command still has to deliver: these records in addition to those already waiting, or nothing.
using Delivery = std::optional<std::vector<Uuid>>;

/// Executes the words, such as "create", "Nákup", "mléko", and shows the outcome. Unknown words are wrong
/// usage.
Result<Delivery> keepRecords(Phone& phone, RecordKind kind, const std::vector<std::string>& words);

/// Synchronises phone and Mac. Fails when the Mac did not take everything.
Task<Result<void>> synchronize(Phone& phone, PhoneSession& session, Attendant& attendant);

} // namespace morvex::commands

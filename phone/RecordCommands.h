#pragma once

#include "phone/Attendant.h"
#include "phone/Phone.h"
#include "phone/PhoneSession.h"

#include <optional>
#include <string>
#include <vector>

/// The commands `notes` and `summaries`. What they do to the phone's own records needs no Mac; delivery comes
/// after it.
namespace morvex::commands {

enum class RecordKind { notes, summaries };

/// What a command leaves to deliver after its work on the phone: these records, besides what waits anyway, or
/// nothing.
using Delivery = std::optional<std::vector<Uuid>>;

/// Does what the words say, such as "create", "Nákup", "mléko", and shows the outcome. Wrong words are wrong
/// usage.
Result<Delivery> keepRecords(Phone& phone, RecordKind kind, const std::vector<std::string>& words);

/// Brings phone and Mac into step. Fails when the Mac did not take everything.
Task<Result<void>> synchronize(Phone& phone, PhoneSession& session, Attendant& attendant);

} // namespace morvex::commands

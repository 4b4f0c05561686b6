#include "app/mail/bridge/ScriptRun.h"
#include "foundation/Text.h"
#include "shared/base/Require.h"

#include <cstdint>
#include <string>
#include <variant>

/// What a script that failed prints for people.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    using scriptRun::End;
    const auto errors = repairUtf8({reinterpret_cast<const char*>(data), size});
    require(std::holds_alternative<MailChyba::Neodpovedel>(scriptRun::failure(errors, End::atTimeLimit).kind),
            "a time limit is told as something else");
    const auto told = scriptRun::failure(errors, End::byItself);
    const auto* failed = std::get_if<MailChyba::Selhalo>(&told.kind);
    if (!failed) return 0;
    const auto words = failed->text.czech();
    require(!words.empty() && trim(words) == words, "a failure has no words, or blanks around them");
    require(!words.contains('\n'), "a failure has several lines");
    require(isValidUtf8(words), "a failure is not UTF-8");
    return 0;
}

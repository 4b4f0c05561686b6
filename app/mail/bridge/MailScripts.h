#pragma once

#include <string_view>

/// The scripts that run in Mail (JavaScript for Automation). Each is the body of a function that finds its
/// parameters in `PARAMS` and returns its result. Their texts are the files in `scripts`; the helpers that a
/// script needs stand at its beginning.
namespace morvex::mailScripts {

/// `hledat`, `ucet`, `jenNeprectene`, `limit`; a list of messages.
extern const std::string_view list;
/// `id`, `ucty`; the text of the message.
extern const std::string_view read;
/// `ucet`, `komu`, `predmet`, `telo`; what was done, for the user.
extern const std::string_view send;
/// Like `send`.
extern const std::string_view draft;
/// No parameters; the names of the accounts.
extern const std::string_view accounts;

} // namespace morvex::mailScripts

#include "app/mail/protocol/MailLogin.h"

#include "app/mail/protocol/MacMailProtocolError.h"
#include "shared/base/SystemTrouble.h"

#include <string_view>

namespace morvex {

namespace {

bool breaksLines(std::string_view text) {
    using namespace std::string_view_literals;
    return text.find_first_of("\r\n\0"sv) != std::string_view::npos;
}

} // namespace

Result<void> MailLogin::check() const {
    if (breaksLines(host)) return fail(MacMailProtocolError::connection(popis(SystemTrouble::badAddress)));
    if (breaksLines(username)) return fail(MacMailProtocolError::invalidAddress());
    if (breaksLines(password)) return fail(MacMailProtocolError::login());
    return {};
}

} // namespace morvex

#include "app/mail/MacSMTPAccount.h"

#include "foundation/Text.h"
#include "shared/wire/Describe.h"

namespace morvex {

void describe(auto& io, Is<MacSMTPAccount> auto& account) {
    io.required("id", account.id);
    io.required("label", account.label);
    io.required("address", account.address);
    io.required("senderName", account.senderName);
    io.required("imapHost", account.imapHost);
    io.required("smtpHost", account.smtpHost);
}

template struct Codec<MacSMTPAccount>;
template struct Codec<std::vector<MacSMTPAccount>>;

bool MacSMTPAccount::isComplete() const {
    return !trim(address).empty() && !trim(imapHost).empty() && !trim(smtpHost).empty();
}

} // namespace morvex

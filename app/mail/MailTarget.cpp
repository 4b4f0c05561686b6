#include "app/mail/MailTarget.h"

#include "app/mail/MacSMTPServiceError.h"
#include "foundation/Text.h"
#include "shared/base/Overloaded.h"
#include "shared/base/Try.h"

#include <string_view>
#include <utility>

namespace morvex {

namespace {

/// Nothing if Apple Mail has no account that is meant without a name.
Result<std::optional<MailTarget>> appleTarget(const MailSources& sources, std::string_view name = {}) {
    TRY(auto, account, sources.accounts.ucetProOdeslani(name));
    if (!account) return std::optional<MailTarget>();
    return MailTarget{MailTarget::Apple{*std::move(account)}};
}

Result<MailTarget> named(const MailSources& sources, const std::string& name) {
    if (sources.integrations.isOn(Integration::smtp))
        if (auto account = sources.smtp.najdiUcet(name)) return MailTarget{*std::move(account)};
    if (sources.integrations.isOn(Integration::appleMail)) {
        TRY(auto, target, appleTarget(sources, name));
        if (target) return *std::move(target);
    }
    return fail(MacSMTPServiceError{MacSMTPServiceError::UnknownAccount{name}});
}

Result<MailTarget> unnamed(const MailSources& sources) {
    const bool isSmtpOn = sources.integrations.isOn(Integration::smtp);
    if (isSmtpOn)
        if (auto account = sources.smtp.najdiUcet({})) return MailTarget{*std::move(account)};
    if (sources.integrations.isOn(Integration::appleMail)) {
        TRY(auto, target, appleTarget(sources));
        if (target) return *std::move(target);
    }
    if (isSmtpOn && sources.smtp.hasCompleteAccount())
        return fail(MacSMTPServiceError{MacSMTPServiceError::ChooseDefault{}});
    // Whatever the switch of Apple Mail says: its account is better than no answer.
    TRY(auto, target, appleTarget(sources));
    if (target) return *std::move(target);
    using Error = MacMailAccounts::Error;
    return sources.accounts.povolene().empty() ? fail(Error{Error::NoAccountEnabled{}})
                                               : fail(Error{Error::ChooseDefault{}});
}

} // namespace

const std::string& MailTarget::sender() const {
    return std::visit(Overloaded{[](const Apple& apple) -> const std::string& { return apple.account; },
                                 [](const Smtp& smtp) -> const std::string& { return smtp.shownName(); }},
                      value);
}

Result<MailTarget> resolveMailTarget(const MailSources& sources, const std::optional<std::string>& account) {
    const auto name = trim(account.value_or(""));
    return name.empty() ? unnamed(sources) : named(sources, name);
}

} // namespace morvex

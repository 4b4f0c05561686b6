#include "app/mail/MailFeature.h"

#include "app/features/FeatureContext.h"
#include "shared/wire/MacStatus.h"

#include <utility>

namespace morvex {

MailFeature::MailFeature(FeatureContext& context, MailTools::Approve approve)
    : Feature(context),
      context_(context),
      keychain_(context.services.vault, context.services.vaultThread),
      smtp_({context.services.defaults,
             keychain_,
             context.random(),
             {context.services.tls, context.clock(), context.services.workers, &context.services.localTime},
             context.scope.token()}),
      bridge_({context.services.processes, context.clock(), context.services.workers,
               context.services.environment, context.services.osascript}),
      apple_({context.services.defaults, bridge_}),
      tools_(
          {context.integrations, smtp_, apple_, bridge_}, [this] { return postaDostupna_; },
          std::move(approve)) {
    tools_.addTo(context.tools);
    smtpChanged_ = smtp_.onChange([this] { tell(); });
    appleChanged_ = apple_.onChange([this] { tell(); });
}

void MailFeature::tell() {
    changed_.tell();
    // Behind a refresh the status is sent anyway.
    if (!isRefreshing_) context_.scope.spawn(context_.poslatStav());
}

void MailFeature::addTo(MacStatus& status) const {
    const auto& on = context_.integrations;
    status.mailAvailable = (on.isOn(Integration::appleMail) && postaDostupna_) ||
                           (on.isOn(Integration::smtp) && smtp_.hasCompleteAccount());
}

Task<void> MailFeature::refresh() {
    isRefreshing_ = true;
    co_await apple_.obnovit(context_.scope.token());
    isRefreshing_ = false;
    postaPotiz_ = apple_.problem();
    postaDostupna_ = !postaPotiz_ && !apple_.available().empty();
    changed_.tell();
}

} // namespace morvex

#pragma once

#include "app/features/Feature.h"
#include "app/keychain/Keychain.h"
#include "app/mail/MailTools.h"
#include "foundation/Signal.h"
#include "shared/base/Sentence.h"

#include <functional>
#include <optional>

namespace morvex {

/// Mail of this computer's user: Apple Mail where it exists, and the direct accounts.
class MailFeature final : public Feature {
  public:
    MailFeature(FeatureContext& context, MailTools::Approve approve);

    [[nodiscard]] MacSMTPService& smtp() { return smtp_; }

    [[nodiscard]] MacMailAccounts& appleAccounts() { return apple_; }

    /// Whether this system can have Apple Mail. Asks the disk.
    [[nodiscard]] bool hasAppleMail() const { return bridge_.isAvailable(); }

    /// Whether Apple Mail can be used.
    [[nodiscard]] bool postaDostupna() const { return postaDostupna_; }

    /// What is wrong with Apple Mail.
    [[nodiscard]] const std::optional<Sentence>& postaPotiz() const { return postaPotiz_; }

    void addTo(MacStatus& status) const override;
    Task<void> refresh() override;

    /// For views: called when something of the above has changed.
    [[nodiscard]] Connection onChange(std::function<void()> call) {
        return changed_.connect(std::move(call));
    }

  private:
    void tell();

    FeatureContext& context_;
    Keychain keychain_;
    MacSMTPService smtp_;
    MailBridge bridge_;
    MacMailAccounts apple_;
    MailTools tools_;
    bool isRefreshing_ = false;
    bool postaDostupna_ = false;
    std::optional<Sentence> postaPotiz_;
    Signal<> changed_;
    Connection smtpChanged_;
    Connection appleChanged_;
};

} // namespace morvex

#pragma once

#include "app/keychain/Keychain.h"
#include "app/mail/MacSMTPAccount.h"
#include "app/mail/MacSMTPMessage.h"
#include "app/mail/protocol/MacIMAPClient.h"
#include "app/mail/protocol/MailServices.h"
#include "foundation/Random.h"
#include "foundation/Signal.h"
#include "platform/ports/RightsChanges.h"
#include "platform/ports/UserDefaults.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace morvex {

/// The direct mail accounts, those reached by IMAP and SMTP, and mail over them. Accounts are stored in the
/// user defaults, passwords in the keychain. Each operation opens a connection of its own, and has
/// `timeLimit` for all of its dialogue, so that a server cannot go on for ever. Main thread only;
/// the owner ends all tasks before it destroys this object.
class MacSMTPService {
  public:
    struct Services {
        UserDefaults& defaults;
        const Keychain& keychain;
        Random& random;
        MailServices mail;
        std::stop_token stop; ///< ends every exchange with a server
    };

    /// How the last test of an account ended.
    struct AccountState {
        enum class Case { idle, testing, ready, failed };

        Case kind = Case::idle;
        Sentence message = {}; ///< of a failed one

        bool operator==(const AccountState&) const = default;
    };

    static constexpr std::chrono::seconds timeLimit{120};

    /// Most messages that one call lists.
    static constexpr std::int64_t mostMessages = 200;

    /// Reads the stored accounts; there are none if the data is missing or damaged in any record.
    explicit MacSMTPService(Services services);

    [[nodiscard]] const std::vector<MacSMTPAccount>& accounts() const { return settings_.accounts; }

    [[nodiscard]] bool hasCompleteAccount() const;

    [[nodiscard]] const std::optional<std::string>& defaultAccountID() const { return settings_.defaultID; }

    [[nodiscard]] AccountState state(const std::string& id) const;

    /// Adds the account, or replaces the one with its id, once that is saved. Its texts are trimmed; a new
    /// one gets an id, which is returned. An empty password keeps the present one; another one goes into the
    /// keychain first. Fails with `KeychainError` or the error of the save; nothing is changed then.
    Task<Result<std::string>> ulozit(MacSMTPAccount ucet, std::string heslo);

    /// Removes the account and its password; takes effect at once.
    Task<void> odstranit(std::string id);

    /// An unknown id is ignored.
    void nastavVychozi(const std::string& id);

    /// Logs in by IMAP and out again; `state` tells how it went. Changes of the account meanwhile win.
    Task<void> otestovat(std::string id);

    /// The account with this id, label or address, compared without case and diacritics; the first match
    /// wins. Without a name the default one, or the only one. Fails with `MacSMTPServiceError`.
    [[nodiscard]] Result<MacSMTPAccount> ucet(const std::optional<std::string>& jmeno) const;

    /// The same among the complete accounts, without an error.
    [[nodiscard]] std::optional<MacSMTPAccount> najdiUcet(const std::optional<std::string>& jmeno) const;

    /// The newest messages of one account, or of all complete ones, at most `limit` of each; unread ones
    /// only, or those whose sender or subject has `hledat`. Fails with the first failure.
    Task<Result<std::vector<MacSMTPMessage>>> zpravy(std::optional<std::string> ucet,
                                                     std::optional<std::string> hledat, bool jenNeprectene,
                                                     std::int64_t limit);

    /// The text of a message. Fails with `NoMessage`, `UnknownAccount`, or the failure of the dialogue.
    Task<Result<std::string>> obsah(std::string id);

    /// Sends a message and returns a sentence for the user.
    Task<Result<Sentence>> odeslat(std::optional<std::string> ucet, std::string komu, std::string predmet,
                                   std::string telo);

    /// Always fails with `DraftUnsupported`.
    [[nodiscard]] static Result<Sentence> koncept();

    /// Called when accounts, the default or a state have changed.
    [[nodiscard]] Connection onChange(std::function<void()> call) {
        return changed_.connect(std::move(call));
    }

  private:
    struct Settings {
        std::vector<MacSMTPAccount> accounts;
        std::optional<std::string> defaultID;

        /// A default that names no account is cleared; the only account is the default.
        void applyDefaultRule();
    };

    static Settings stored(const UserDefaults& defaults);
    static DefaultsValues values(const Settings& settings);
    void keep();
    Task<Result<void>> keepOnceSaved(std::function<void(Settings&)> change);
    void setState(const std::string& id, AccountState state);
    Task<void> restorePassword(std::string account, std::optional<std::string> before);
    Task<Result<std::string>> password(const MacSMTPAccount& account);
    Task<Result<std::unique_ptr<MacIMAPClient>>> logIn(MacSMTPAccount account, std::stop_token stop);
    Task<Result<std::vector<MacSMTPMessage>>> messagesOf(MacSMTPAccount account, std::string wanted,
                                                         bool onlyUnread, std::size_t limit);

    Services services_;
    Settings settings_;
    std::map<std::string, AccountState> states_;
    RightsChanges changes_;
    Signal<> changed_;
};

} // namespace morvex

#include "app/customapps/MacCustomAppsService.h"
#include "platform/linux/VaultChoice.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/ScriptedHttp.h"
#include "platform/posix/FileVault.h"
#include "platform/posix/VaultRules.h"
#include "shared-apple/KeychainStore.h"
#include "shared-apple/OwnIdentity.h"
#include "tests/fault/SavedFiles.h"
#include "tests/support/ImmediateDefaults.h"

#include <algorithm>
#include <memory>

namespace morvex {

namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

namespace secret {

constexpr auto service = "služba";
constexpr auto account = "účet";

std::function<bool()> change(const fs::path& home, const std::string& text) {
    auto vault = std::make_shared<FileVault>(home);
    return [vault, text] {
        if (vault->update(service, account, asBytes(text)) == vaultStatus::ok) return true;
        return vault->add(service, account, asBytes(text)) == vaultStatus::ok;
    };
}

std::function<bool()> remove(const fs::path& home, const std::string&) {
    return [home] {
        const auto status = FileVault(home).remove(service, account);
        return status == vaultStatus::ok || status == vaultStatus::itemNotFound;
    };
}

Texts look(const fs::path& home) {
    auto [status, bytes] = FileVault(home).find(service, account);
    return {std::to_string(status), std::string(asText(bytes))};
}

} // namespace secret

namespace identity {

const std::string service = "zz.bramwicks.tolvy";
const std::string agreementAccount = "identita.dohodovy";
/// The size of the text does not matter here, since a key always has the same length.
constexpr std::size_t onlySize = 20;

const Bytes& staleKey() {
    static const auto key = toBytes("a key that is left of another...");
    return key;
}

void layHalf(const fs::path& home, const std::string&) {
    require(FileVault(home).add(service, agreementAccount, staleKey()) == vaultStatus::ok, "no key");
}

std::function<bool()> change(const fs::path& home, const std::string&) {
    return [home] {
        FileVault vault(home);
        KeychainStore store(vault, service);
        return ownIdentity(store).has_value();
    };
}

Texts look(const fs::path& home) {
    FileVault vault(home);
    const auto found = KeychainStore(vault, service).nactiIdentitu();
    if (!found) return {found.error().popis().czech()};
    if (!*found) return {"none"};
    const auto agreement = (*found)->dohodovy().exportRaw();
    return {std::ranges::equal(agreement.view(), staleKey()) ? "mixed" : "whole"};
}

} // namespace identity

namespace customApp {

struct Opened {
    explicit Opened(const fs::path& home)
        : defaults(home), vault(home), seen(home, {executor, executor, clock}) {
        // No server is asked.
        service.setActive(false);
    }

    ~Opened() {
        scope.stop();
        executor.run(scope.join());
        executor.run(seen.saved());
    }

    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

    ImmediateDefaults defaults;
    FileVault vault;
    ManualExecutor executor;
    ScriptedRandom random;
    Keychain keychain{vault, executor};
    ManualClock clock;
    ScriptedHttp http;
    SeenTools seen;
    TaskScope scope{executor};
    MacCustomAppsService service{{defaults, keychain, random, http, executor, clock, seen, scope}};
};

std::string accountOf(const std::string& id) {
    return "custom.app." + id + ".token";
}

std::function<bool()> add(const fs::path& home, const std::string& text) {
    auto opened = std::make_shared<Opened>(home);
    if (text.starts_with("new")) opened->random.uuid();
    return [opened, text] {
        auto saved = opened->executor.run(opened->service.save({}, "App", "https://example.com", text));
        return saved && *saved && !opened->defaults.problem();
    };
}

std::function<bool()> remove(const fs::path& home, const std::string&) {
    auto opened = std::make_shared<Opened>(home);
    return [opened] {
        const auto apps = opened->service.apps();
        for (const auto& app : apps) opened->executor.run(opened->service.remove(app.id));
        return !opened->defaults.problem();
    };
}

Texts lookForApps(const fs::path& home) {
    Texts texts;
    for (const auto& app : Opened(home).service.apps()) texts.push_back(app.id);
    return texts;
}

Texts look(const fs::path& home) {
    auto texts = lookForApps(home);
    FileVault vault(home);
    const auto apps = texts;
    for (const auto& id : apps)
        texts.emplace_back(asText(vault.find(Keychain::service, accountOf(id)).bytes));
    return texts;
}

} // namespace customApp

/// A secret in files from before the choice of a vault existed.
namespace vaultChoice {

constexpr auto service = "služba";
constexpr auto account = "účet";

void lay(const fs::path& home, const std::string& text) {
    require(FileVault(home).add(service, account, asBytes(text)) == vaultStatus::ok, "no secret");
}

std::function<bool()> change(const fs::path& home, const std::string& text) {
    auto vault = std::make_shared<VaultChoice>(home);
    return [vault, text] { return vault->update(service, account, asBytes(text)) == vaultStatus::ok; };
}

Texts look(const fs::path& home) {
    auto [status, bytes] = VaultChoice(home).find(service, account);
    return {std::to_string(status), std::string(asText(bytes))};
}

} // namespace vaultChoice

} // namespace

std::vector<SavedFile> filesOfSecrets() {
    const std::string secretFile = "%C3%BA%C4%8Det";
    const std::vector<std::string> keys{"identita.podpisovy", "identita.dohodovy"};
    std::vector<std::string> apps{"defaults.json"};
    for (const auto* number : {"1", "2"})
        apps.push_back(customApp::accountOf("mac-00000000-0000-4000-8000-00000000000" + std::string(number)));
    return {
        {"a secret",
         layByChange<secret::change>,
         secret::change,
         secret::look,
         {secretFile},
         vaultRules::itemLimit},
        {"the first secret", layNothing, secret::change, secret::look, {secretFile}, vaultRules::itemLimit},
        {"a removed secret",
         layByChange<secret::change>,
         secret::remove,
         secret::look,
         {secretFile},
         vaultRules::itemLimit},
        {"the choice of the vault",
         vaultChoice::lay,
         vaultChoice::change,
         vaultChoice::look,
         {"vault-backend", secretFile},
         vaultRules::itemLimit},
        {"an identity", layNothing, identity::change, identity::look, keys, identity::onlySize},
        {"an identity over half of another", identity::layHalf, identity::change, identity::look, keys,
         identity::onlySize},
        {"the first custom app", layNothing, customApp::add, customApp::look, apps, vaultRules::itemLimit},
        {"a custom app", layByChange<customApp::add>, customApp::add, customApp::look, apps,
         vaultRules::itemLimit},
        {"a removed custom app", layByChange<customApp::add>, customApp::remove, customApp::lookForApps, apps,
         vaultRules::itemLimit},
    };
}

} // namespace morvex

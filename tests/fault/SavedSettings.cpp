#include "app/execution/Slozky.h"
#include "app/voice/LanguageInForce.h"
#include "app/voice/MacVoiceController.h"
#include "platform/memory/FakeFolderPicker.h"
#include "platform/memory/FixedFolders.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/MemoryVault.h"
#include "platform/posix/InodeBookmarks.h"
#include "tests/fault/SavedFiles.h"
#include "tests/support/ImmediateDefaults.h"

#include <memory>
#include <utility>

namespace morvex {

namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

namespace settings {

std::function<bool()> change(const fs::path& home, const std::string& text) {
    auto defaults = std::make_shared<ImmediateDefaults>(home);
    return [defaults, text] {
        defaults->set("text", text);
        return !defaults->problem();
    };
}

Texts look(const fs::path& home) {
    const ImmediateDefaults defaults(home);
    return {defaults.text("text").value_or("none"), defaults.problem().value_or(Sentence()).czech()};
}

} // namespace settings

namespace folders {

constexpr auto bookmarksKey = "slozky.bezpecnostniZalozky";
constexpr auto pathsKey = "slozky.povolene";

/// The allowed folders, and the objects that they need.
struct Opened {
    explicit Opened(const fs::path& home) : defaults(home) {
        slozky = Slozky::create(defaults, bookmarks, picker, standard);
    }

    void allow(const fs::path& folder) {
        picker.answers.push_back({folder.string()});
        require(executor.run(slozky->pridat()), "the choice of a folder waits");
    }

    InodeBookmarks bookmarks;
    FakeFolderPicker picker;
    FixedFolders standard;
    ManualExecutor executor;
    ImmediateDefaults defaults;
    std::unique_ptr<Slozky> slozky;
};

/// In addition to two folders it writes a text, so that the file has the size to be tried.
void lay(const fs::path& home, const std::string& text) {
    for (const auto* name : {"first", "second", "third"}) fs::create_directory(home / name);
    Opened opened(home);
    opened.allow(home / "first");
    opened.allow(home / "second");
    opened.defaults.set("text", text);
}

std::function<bool()> remove(const fs::path& home, const std::string&) {
    auto opened = std::make_shared<Opened>(home);
    return [opened, home] {
        opened->slozky->odebrat(home / "first");
        return !opened->defaults.problem();
    };
}

std::function<bool()> allow(const fs::path& home, const std::string&) {
    auto opened = std::make_shared<Opened>(home);
    return [opened, home] {
        opened->allow(home / "third");
        return !opened->slozky->chybaOpravneni() && !opened->defaults.problem();
    };
}

/// The stored settings and their effect.
Texts look(const fs::path& home) {
    const ImmediateDefaults kept(home);
    auto paths = kept.texts(pathsKey).value_or(Texts());
    auto bookmarks = kept.dataList(bookmarksKey).value_or(std::vector<Bytes>());
    Texts texts{std::to_string(paths.size()), std::to_string(bookmarks.size()), kept.text("text").value()};
    Opened opened(home);
    for (const auto& name : opened.slozky->aliasy()) texts.push_back(name);
    for (const auto& path : opened.slozky->vyzadujiObnoveni()) texts.push_back(fs::path(path).filename());
    return texts;
}

} // namespace folders

/// The language of the phone, which takes effect through three settings.
namespace language {

struct Opened {
    explicit Opened(const fs::path& home) : defaults(home) {}

    ImmediateDefaults defaults;
    MemoryVault vault;
    ManualExecutor executor;
    Keychain keychain{vault, executor};
    MacVoiceController hlas{defaults, keychain};
};

void lay(const fs::path& home, const std::string& text) {
    ImmediateDefaults(home).set("text", text);
}

std::function<bool()> change(const fs::path& home, const std::string&) {
    auto opened = std::make_shared<Opened>(home);
    return [opened] {
        CompanionPreferences preferences;
        preferences.language = "fr";
        return opened->executor.run(opened->hlas.applyPreferences(preferences)) &&
               !opened->defaults.problem();
    };
}

Texts look(const fs::path& home) {
    Opened opened(home);
    return {languageInForce(opened.defaults), opened.hlas.languageCode(),
            opened.defaults.text("app.language.phone").value_or("none"),
            opened.defaults.text("text").value()};
}

} // namespace language

} // namespace

std::vector<SavedFile> filesOfSettings() {
    return {
        {"settings", layByChange<settings::change>, settings::change, settings::look, {"defaults.json"}},
        {"the first settings", layNothing, settings::change, settings::look, {"defaults.json"}},
        {"a removed folder", folders::lay, folders::remove, folders::look, {"defaults.json"}},
        {"an allowed folder", folders::lay, folders::allow, folders::look, {"defaults.json"}},
        {"the phone's language", language::lay, language::change, language::look, {"defaults.json"}},
    };
}

} // namespace morvex

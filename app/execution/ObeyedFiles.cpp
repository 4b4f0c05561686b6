#include "app/execution/ObeyedFiles.h"

#include "app/execution/SouboryChyba.h"
#include "foundation/Paths.h"
#include "foundation/Text.h"
#include "platform/posix/FolderEntries.h"
#include "shared/base/Try.h"

#include <algorithm>
#include <array>

namespace morvex::ObeyedFiles {

namespace {

/// Names of files and folders at any depth, as `foldFileName` gives them. The reasons stand in
/// `docs/security.md`.
constexpr auto obeyed = std::to_array<std::string_view>({
    // versions and their hooks
    ".git",
    ".gitconfig",
    ".gitattributes",
    ".gitmodules",
    ".hg",
    ".hgrc",
    ".svn",
    ".jj",
    ".husky",
    ".pre-commit-config.yaml",
    // coding agents
    ".claude",
    ".claude.json",
    ".codex",
    ".cursor",
    ".gemini",
    ".windsurf",
    ".opencode",
    ".mcp.json",
    ".aider.conf.yml",
    // editors
    ".vscode",
    ".idea",
    ".devcontainer",
    ".devcontainer.json",
    ".zed",
    ".helix",
    ".vim",
    ".vimrc",
    ".gvimrc",
    ".exrc",
    ".nvimrc",
    ".nvim.lua",
    ".emacs",
    ".emacs.d",
    // shells, terminals and logins
    ".profile",
    ".zprofile",
    ".zlogin",
    ".zlogout",
    ".oh-my-zsh",
    ".kshrc",
    ".mkshrc",
    ".cshrc",
    ".tcshrc",
    ".login",
    ".logout",
    ".envrc",
    ".direnv",
    ".inputrc",
    ".tmux.conf",
    ".screenrc",
    ".xprofile",
    ".xinitrc",
    ".xsession",
    ".xsessionrc",
    ".pam_environment",
    // settings of whole programs
    ".config",
    ".local",
    ".var",
    ".mozilla",
    ".mailcap",
    ".ssh",
    ".aws",
    ".kube",
    // packages and builds
    ".npmrc",
    ".yarn",
    ".yarnrc",
    ".yarnrc.yml",
    ".pnpmfile.cjs",
    ".cargo",
    ".mvn",
    ".gradle",
    ".bazelrc",
    ".venv",
    // debuggers and interpreters
    ".gdbinit",
    ".gdbearlyinit",
    ".lldbinit",
    ".pdbrc",
    ".ipython",
    ".jupyter",
    ".irbrc",
    ".pryrc",
    ".rprofile",
    ".ghci",
    ".sqliterc",
    ".psqlrc",
});

constexpr auto obeyedBeginnings = std::to_array<std::string_view>({".bash", ".zsh"});

/// One of them beside HEAD makes a folder a repository, or tells where the rest of it lies.
constexpr auto besideHead = std::to_array<std::string_view>({"config", "objects", "refs", "commondir"});
constexpr std::string_view head = "head";
constexpr std::string_view hooks = "hooks";

/// Bytes. A disk holds names of 255 letters at most; a longer one fails there.
constexpr std::size_t longestName = 4096;

std::string folded(std::string_view name) {
    return name.size() <= longestName ? foldFileName(name) : std::string();
}

bool contains(const auto& names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

bool isObeyed(std::string_view name) {
    return contains(obeyed, name) ||
           std::ranges::any_of(obeyedBeginnings, [&](auto beginning) { return name.starts_with(beginning); });
}

struct Holding {
    bool head = false;
    bool other = false;

    void add(std::string_view name, bool isFolder) {
        // A folder of that name is no HEAD to git.
        head = head || (name == ObeyedFiles::head && !isFolder);
        other = other || contains(besideHead, name);
    }
};

Result<Holding> holdingOf(int folder) {
    TRY(auto, entries, FolderEntries::ofOpened(folder));
    Holding holding;
    for (;;) {
        TRY(const auto, entry, entries.next());
        if (!entry) return holding;
        holding.add(folded(entry->name), entry->kind == FolderEntries::Kind::folder);
    }
}

std::unexpected<Error> refusal(std::string_view name) {
    return fail(SouboryChyba{SouboryChyba::WouldStartProgram{paths::lastComponent(name)}});
}

} // namespace

Result<void> checkNames(std::string_view belowFolder) {
    for (const auto& name : paths::components(belowFolder))
        if (isObeyed(folded(name))) return refusal(name);
    return {};
}

Result<void> checkRepository(int folder, const std::string& name, BeneathFolder::Held held) {
    TRY(auto, holding, holdingOf(folder));
    const auto added = folded(name);
    holding.add(added, held == BeneathFolder::Held::folder);
    if (holding.head && (holding.other || added == hooks)) return refusal(name);
    return {};
}

} // namespace morvex::ObeyedFiles

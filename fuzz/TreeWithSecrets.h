#pragma once

#include "app/execution/AllowedFolders.h"
#include "app/execution/CheckedPath.h"
#include "foundation/Paths.h"
#include "fuzz/MemoryFolder.h"
#include "platform/memory/FixedFolders.h"
#include "platform/posix/BeneathFolder.h"
#include "shared/base/Bytes.h"
#include "shared/base/Require.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <vector>

namespace morvex {

/// Two allowed folders with many ways out of them, each leading to a secret.
class TreeWithSecrets {
  public:
    /// The places of credentials are repeated here, so that a change of the check is noticed.
    static constexpr std::array<std::string_view, 12> forbidden = {"/Library/Keychains",
                                                                   "/.ssh",
                                                                   "/.aws",
                                                                   "/.gnupg",
                                                                   "/.config/gh",
                                                                   "/.docker/config.json",
                                                                   "/.netrc",
                                                                   "/.npmrc",
                                                                   "/.pypirc",
                                                                   "/.kube",
                                                                   "/Morvex/vault",
                                                                   "/.local/share/keyrings"};

    TreeWithSecrets() {
        standard_.homeFolder = path("home");
        standard_.desktopFolder = path("home/Desktop");
        file("home/Projects/a/file", "inside");
        file("home/Desktop/note", "inside");
        for (const auto fragment : forbidden) secret("home/Projects" + std::string(fragment) + "/key");
        secret("home/ProjectsOld/a");
        secret("outside/a/file");
        link("home/Projects/b", "a");
        link("home/Projects/o", path("outside"));
        link("home/Projects/u", "../../outside");
        link("home/Projects/d", path("outside/later"));
        link("home/Projects/m", "missing/../o/a");
        link("home/Projects/k", ".ssh");
        link("home/Projects/l", "l");
        link("home/Projects/r", "/proc/self/root");
        link("home/Desktop/p", "../Projects");
        link("outside/back", path("home/Projects"));
        for (const auto& place : secrets_) statuses_.push_back(statusOf(place));
    }

    [[nodiscard]] std::string path(const std::string& name) const { return (folder_.path() / name).string(); }

    /// Replaces a leading @ in the input by the root of this tree.
    [[nodiscard]] std::string placed(std::string text) const {
        if (text.starts_with('@')) text.replace(0, 1, path(""));
        return text;
    }

    [[nodiscard]] std::vector<std::string> folders() const {
        return {path("home/Projects"), path("home/Desktop")};
    }

    [[nodiscard]] AllowedFolders allowed() const { return {folders(), standard_}; }

    /// An accepted path must be inside, and reading it must not reveal a secret.
    void expectHarmless(const CheckedPath& checked) const {
        require(std::ranges::count(folders(), checked.slozka) == 1, "another folder than an allowed one");
        require(checked.cesta == checked.slozka || checked.cesta.starts_with(checked.slozka + "/"),
                "a path outside");
        require(!checked.cesta.contains('\0'), "a path that the system cuts");
        for (const auto fragment : forbidden) require(!checked.cesta.contains(fragment), "a forbidden path");
        require(paths::resolved(checked.cesta) == checked.cesta, "a link was left");
        if (char* real = ::realpath(checked.cesta.c_str(), nullptr)) {
            require(checked.cesta == real, "the system resolves it otherwise");
            std::free(real);
        }
        auto opened = BeneathFolder::open(checked.slozka)->openFile(checked.belowFolder());
        if (opened) require(asText(*readUpTo(opened->get(), 100)) == "inside", "a secret was read");
    }

    /// Writing to an accepted path must create only that file and replace nothing. The file is then removed.
    void expectHarmlessWriting(const CheckedPath& checked) const {
        auto above = std::filesystem::path(checked.cesta);
        auto made = above;
        std::error_code ignored;
        for (; !std::filesystem::exists(above, ignored); above = above.parent_path()) made = above;
        const bool isThere = above == checked.cesta;
        const bool canBe = !isThere && std::filesystem::is_directory(above);

        const auto written =
            BeneathFolder::open(checked.slozka)->writeNew(checked.belowFolder(), asBytes("inside"));
        require(written.has_value() == canBe, "what can be written is what is not there");
        for (std::size_t index = 0; index < secrets_.size(); ++index)
            require(isSame(statusOf(secrets_[index]), statuses_[index]), "a secret was written");
        if (!written) return;
        require(std::filesystem::file_size(checked.cesta) == 6, "nothing was written");
        std::filesystem::remove_all(made);
    }

  private:
    void file(const std::string& name, std::string_view content) const {
        std::filesystem::create_directories((folder_.path() / name).parent_path());
        folder_.write(name.c_str(), content);
    }

    /// Creates an unreadable file in an unwritable folder.
    void secret(const std::string& name) {
        file(name, "secret");
        secrets_.push_back(folder_.path() / name);
        secrets_.push_back(secrets_.back().parent_path());
    }

    void link(const char* name, const std::string& target) const {
        std::filesystem::create_symlink(target, folder_.path() / name);
    }

    static struct stat statusOf(const std::filesystem::path& place) {
        struct stat status{};
        require(::stat(place.c_str(), &status) == 0, "a secret is gone");
        return status;
    }

    static bool isSame(const struct stat& left, const struct stat& right) {
        return left.st_size == right.st_size && left.st_mtim.tv_sec == right.st_mtim.tv_sec &&
               left.st_mtim.tv_nsec == right.st_mtim.tv_nsec;
    }

    MemoryFolder folder_;
    FixedFolders standard_;
    std::vector<std::filesystem::path> secrets_;
    std::vector<struct stat> statuses_;
};

} // namespace morvex

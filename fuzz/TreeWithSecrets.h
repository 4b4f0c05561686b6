#pragma once

#include "app/execution/BeneathFolder.h"
#include "app/execution/OverenaCesta.h"
#include "app/execution/PovoleneSlozky.h"
#include "foundation/Paths.h"
#include "fuzz/MemoryFolder.h"
#include "platform/memory/FixedFolders.h"
#include "shared/base/Bytes.h"
#include "shared/base/Require.h"

#include <cstdlib>
#include <filesystem>
#include <string>

namespace morvex {

/// An allowed folder full of ways out, with a secret behind each.
class TreeWithSecrets {
  public:
    TreeWithSecrets() {
        standard_.homeFolder = path("home");
        file("home/Projects/a/file", "inside");
        file("home/Projects/.ssh/key", "secret");
        file("home/ProjectsOld/a", "secret");
        file("outside/a/file", "secret");
        link("home/Projects/b", "a");
        link("home/Projects/o", path("outside"));
        link("home/Projects/u", "../../outside");
        link("home/Projects/d", path("outside/later"));
        link("home/Projects/m", "missing/../o/a");
        link("home/Projects/k", ".ssh");
        link("home/Projects/l", "l");
        link("home/Projects/r", "/proc/self/root");
        link("outside/back", path("home/Projects"));
    }

    [[nodiscard]] std::string path(const char* name) const { return (folder_.path() / name).string(); }

    /// What an input says about this tree: @ in front stands for its place.
    [[nodiscard]] std::string placed(std::string text) const {
        if (text.starts_with('@')) text.replace(0, 1, path(""));
        return text;
    }

    [[nodiscard]] PovoleneSlozky allowed() const { return {{path("home/Projects")}, standard_}; }

    /// A path that passed lies inside, and what is read there is no secret.
    void expectHarmless(const OverenaCesta& checked) const {
        const auto allowed = path("home/Projects");
        vyzaduj(checked.slozka == allowed, "another folder than the allowed one");
        vyzaduj(checked.cesta == allowed || checked.cesta.starts_with(allowed + "/"), "a path outside");
        vyzaduj(!checked.cesta.contains("/.ssh") && !checked.cesta.contains('\0'), "a forbidden path");
        vyzaduj(paths::resolved(checked.cesta) == checked.cesta, "a link was left");
        if (char* real = ::realpath(checked.cesta.c_str(), nullptr)) {
            vyzaduj(checked.cesta == real, "the system resolves it otherwise");
            std::free(real);
        }
        auto folder = BeneathFolder::open(checked.slozka);
        auto opened = folder ? folder->openFile(checked.odSlozky()) : std::unexpected(folder.error());
        if (opened) vyzaduj(asText(*readUpTo(opened->get(), 100)) == "inside", "a secret was read");
    }

  private:
    void file(const char* name, std::string_view content) const {
        std::filesystem::create_directories((folder_.path() / name).parent_path());
        folder_.write(name, content);
    }

    void link(const char* name, const std::string& target) const {
        std::filesystem::create_symlink(target, folder_.path() / name);
    }

    MemoryFolder folder_;
    FixedFolders standard_;
};

} // namespace morvex

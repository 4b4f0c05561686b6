#pragma once

#include "app/execution/SouboryChyba.h"
#include "foundation/Text.h"
#include "fuzz/TreeWithSecrets.h"

#include <array>
#include <climits>
#include <cstdlib>
#include <optional>
#include <sys/stat.h>

namespace morvex {

/// The actual or expected outcome for a path.
struct PathVerdict {
    enum Case { passes, isForbidden, isOutside, isNoFile, saysNothing };

    Case kind;
    std::string text = {}; ///< the path to which it leads, the fragment, or the last component

    bool operator==(const PathVerdict&) const = default;

    static PathVerdict of(const Error& error) {
        const auto* refusal = error.as<SouboryChyba>();
        require(refusal, "a refusal without a sentence");
        if (const auto* cause = std::get_if<SouboryChyba::ZakazanaCesta>(&refusal->kind))
            return {isForbidden, cause->fragment};
        if (const auto* cause = std::get_if<SouboryChyba::MimoPovolene>(&refusal->kind))
            return {isOutside, cause->name};
        if (std::holds_alternative<SouboryChyba::NeniSoubor>(refusal->kind)) return {isNoFile};
        require(std::holds_alternative<SouboryChyba::Selhalo>(refusal->kind), "a refusal of another call");
        return {saysNothing};
    }
};

/// Predicts the outcome of the path check for a path in the tree. It lets the system resolve the links.
class PathJudge {
  public:
    explicit PathJudge(const TreeWithSecrets& tree) : tree_(tree) {}

    /// Nothing for a path with a dangling link, which the system does not follow.
    [[nodiscard]] std::optional<PathVerdict> verdict(std::string_view path, std::string_view slozka) const {
        const auto trimmed = trim(path);
        if (trimmed.contains('\0')) return PathVerdict{PathVerdict::isNoFile};
        const auto asked = trimmed.empty() ? std::nullopt : absolute(trimmed, slozka);
        if (!asked) return PathVerdict{PathVerdict::saysNothing};
        const auto reached = reachedBy(*asked);
        if (!reached) return std::nullopt;
        for (const auto fragment : TreeWithSecrets::forbidden)
            if (reached->contains(fragment))
                return PathVerdict{PathVerdict::isForbidden, std::string(fragment)};
        for (const auto& folder : tree_.folders())
            if (*reached == folder || reached->starts_with(folder + "/"))
                return PathVerdict{PathVerdict::passes, *reached};
        const auto name = std::filesystem::path(*reached).filename().string();
        return PathVerdict{PathVerdict::isOutside, name.empty() ? "/" : repairUtf8(name)};
    }

    /// The folder that the name means.
    [[nodiscard]] std::optional<std::string> folderNamed(std::string_view name) const {
        const auto wanted = lowerCase(trim(fold(name)));
        if (wanted == "projects") return tree_.path("home/Projects");
        for (const char* desktop : {"desktop", "plocha", "na plose", "pracovni plocha", "desktop folder"})
            if (wanted == desktop) return tree_.path("home/Desktop");
        return std::nullopt;
    }

  private:
    [[nodiscard]] std::optional<std::string> absolute(const std::string& path,
                                                      std::string_view slozka) const {
        if (path.starts_with('/')) return path;
        if (path == "~" || path.starts_with("~/")) return tree_.path("home") + path.substr(1);
        const auto slash = std::min(path.find('/'), path.size());
        if (const auto named = folderNamed(path.substr(0, slash))) return *named + path.substr(slash);
        const auto base = folderNamed(slozka);
        return base ? std::optional(*base + "/" + path) : std::nullopt;
    }

    /// Resolves the links in the existing part of the path.
    static std::optional<std::string> reachedBy(const std::string& path) {
        auto there = std::filesystem::path(path).lexically_normal();
        if (!there.has_filename()) there = there.parent_path();
        std::string missing;
        for (;; there = there.parent_path()) {
            std::array<char, PATH_MAX> real;
            if (::realpath(there.c_str(), real.data()))
                return missing.empty() || real[1] != '\0' ? real.data() + missing : missing;
            struct stat status{};
            if (::lstat(there.c_str(), &status) == 0) return std::nullopt;
            missing.insert(0, "/" + there.filename().string());
        }
    }

    const TreeWithSecrets& tree_;
};

} // namespace morvex

#pragma once

#include "platform/memory/ScriptedPrograms.h"

#include <filesystem>
#include <fstream>
#include <optional>

namespace morvex {

/// Both agents in `bin`, logged in. Their tasks have no answer: the test plays them.
inline void installAgents(const std::filesystem::path& bin, Environment& environment,
                          ScriptedPrograms& programs) {
    std::filesystem::create_directories(bin);
    for (const char* name : {"codex", "claude"}) {
        std::ofstream(bin / name) << "x";
        std::filesystem::permissions(bin / name, std::filesystem::perms::owner_all);
    }
    environment["PATH"] = bin.string();
    programs.answer = [bin](const OutsideProgram& program) -> std::optional<ScriptedPrograms::Answer> {
        if (!program.binary.starts_with(bin.string())) return ScriptedPrograms::Answer{.status = 127};
        if (program.args.front() == "--version") return ScriptedPrograms::Answer{.output = "agent 1.0\n"};
        if (program.args.front() == "auth") return ScriptedPrograms::Answer{};
        return std::nullopt;
    };
}

} // namespace morvex

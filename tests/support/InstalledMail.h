#pragma once

#include "platform/memory/ScriptedPrograms.h"

#include <filesystem>
#include <fstream>
#include <string>

namespace morvex {

/// Makes the program for scripts at this path, and a Mail that has these accounts (JSON) behind it.
inline void installMail(const std::string& osascript, ScriptedPrograms& programs,
                        const std::string& accounts) {
    std::ofstream(osascript) << "";
    std::filesystem::permissions(osascript, std::filesystem::perms::owner_all);
    programs.answer = [osascript, accounts](const OutsideProgram& program) {
        const bool isScript = program.binary == osascript;
        return isScript ? ScriptedPrograms::Answer{.output = accounts}
                        : ScriptedPrograms::Answer{.status = 127};
    };
}

} // namespace morvex

#pragma once

#include "app/mail/bridge/MailBridge.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ScriptedPrograms.h"
#include "shared/wire/Json.h"
#include "tests/support/TemporaryFolder.h"

#include <boost/json.hpp>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// A Mail whose accounts the test names, on the test's executor.
class ScriptedMail {
  public:
    using Names = std::vector<std::string>;

    static std::string listOf(const Names& names) {
        return encode(boost::json::value(boost::json::array(names.begin(), names.end())));
    }

    explicit ScriptedMail(Executor& executor)
        : bridge({.launcher = programs,
                  .clock = clock,
                  .workers = executor,
                  .environment = {},
                  .osascript = folder.path() / "osascript"}) {
        std::ofstream(path) << "";
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        programs.answer = [this](const OutsideProgram&) { return answer; };
    }

    void has(const Names& names) { answer = ScriptedPrograms::Answer{.output = listOf(names)}; }

    void failsWith(const std::string& errors) {
        answer = ScriptedPrograms::Answer{.errors = errors, .status = 1};
    }

    TemporaryFolder folder;
    std::filesystem::path path = folder.path() / "osascript";
    ManualClock clock;
    ScriptedPrograms programs;
    std::optional<ScriptedPrograms::Answer> answer = ScriptedPrograms::Answer{.output = "[]"};
    MailBridge bridge;
};

} // namespace morvex

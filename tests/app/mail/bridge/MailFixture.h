#pragma once

#include "app/mail/bridge/MailBridge.h"
#include "foundation/ThreadExecutor.h"
#include "platform/memory/ManualClock.h"
#include "shared/wire/Json.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include MORVEX_BASICS

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

/// A bridge whose scripts run for real, against the model of a Mail (MailModel.js) whose state a test gives.
class MailFixture : public testing::Test {
  protected:
    void mailIs(std::string_view state) const { std::ofstream(state_) << state; }

    /// What was done to Mail by the last script.
    [[nodiscard]] boost::json::object journal() const {
        std::ostringstream text;
        text << std::ifstream(journal_).rdbuf();
        return parseJson(text.str()).value().as_object();
    }

    /// The only message that the last script has made.
    [[nodiscard]] boost::json::object outgoing() const {
        const auto all = journal().at("outgoing").as_array();
        EXPECT_EQ(all.size(), 1U);
        return all.at(0).as_object();
    }

    template <class T> Result<T> wait(Task<Result<T>> task) { return await(home, std::move(task)); }

    /// Runs a script of the test's own.
    template <class T> Result<T> run(std::string script, boost::json::object parameters = {}) {
        return wait(bridge.spustitSkript<T>(std::move(script), std::move(parameters), MailBridge::timeLimit));
    }

    template <class T> static std::string sentence(const Result<T>& result) {
        return result ? "" : result.error().popis().czech();
    }

    TemporaryFolder folder;
    std::string state_ = folder.path() / "state.json";
    std::string journal_ = folder.path() / "journal.json";
    ThreadExecutor home{"home"};
    ThreadExecutor worker{"worker"};
    SystemLauncher launcher;
    ManualClock clock;
    MailBridge bridge{
        {.launcher = launcher,
         .clock = clock,
         .workers = worker,
         .environment = {{"PATH", "/usr/bin:/bin"}, {"MAIL_STATE", state_}, {"MAIL_JOURNAL", journal_}},
         .osascript = MORVEX_SOURCE_DIR "/tests/app/mail/bridge/osascript"}};
};

} // namespace morvex

#pragma once

#include "app/mail/protocol/MailServices.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/ScriptedTls.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// What a client of mail works with in a test; its other end is `server`, whose words may be laid out before
/// they are asked for.
struct MailParts {
    ManualExecutor executor;
    ManualExecutor workers;
    ManualClock clock;
    ScriptedTls tls;
    std::shared_ptr<ScriptedTlsConnection> server = tls.layOut();
    MailServices services{tls, clock, workers};

    /// Runs both executors until neither has anything to do.
    void settle() {
        while (executor.runUntilIdle() + workers.runUntilIdle() > 0) {
        }
    }

    /// Starts a task; what it came to stands in the result once it has ended.
    template <class T> std::shared_ptr<std::optional<T>> begin(Task<T> task) {
        auto result = std::make_shared<std::optional<T>>();
        executor.start(keep(std::move(task), result));
        settle();
        return result;
    }

    /// What a task came to that waits for nothing from outside.
    template <class T> T end(Task<T> task) { return std::move(begin(std::move(task))->value()); }

    /// What the client has sent so far, without the ends of its lines.
    [[nodiscard]] std::vector<std::string> sent() const {
        auto lines = server->sent;
        for (auto& line : lines)
            if (line.ends_with("\r\n")) line.resize(line.size() - 2);
        return lines;
    }

  private:
    template <class T> static Task<void> keep(Task<T> task, std::shared_ptr<std::optional<T>> result) {
        result->emplace(co_await std::move(task));
    }
};

/// "ok", or the words of the failure.
template <class T> std::string told(const Result<T>& result) {
    return result ? "ok" : result.error().popis().czech();
}

} // namespace morvex

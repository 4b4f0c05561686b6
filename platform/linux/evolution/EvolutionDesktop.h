#pragma once

#include "platform/linux/evolution/EvolutionRegistry.h"
#include "shared/base/Error.h"
#include "shared/base/SystemTrouble.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

enum class SourceKind { events, tasks, contacts };

/// A failure of this side.
struct EvolutionTrouble {
    SystemTrouble kind;

    [[nodiscard]] Sentence popis() const { return morvex::popis(kind); }
};

/// Whether a call failed because the source does not exist any more.
bool isGone(const Error& error);

/// The desktop's accounts and the services behind them. Lives on one thread, whose default context hears the
/// signals. Every call that may block ends when its cancellable is cancelled.
class EvolutionDesktop {
  public:
    struct Source {
        GLibHandle<ESource> source;
        std::string id;
        std::string name;
        std::string account;
    };

    static constexpr std::chrono::seconds longestWaitForAccounts{2};

    /// `changed` is called when a calendar becomes writable.
    EvolutionDesktop(std::shared_ptr<EvolutionRegistry> shared, std::function<void()> changed)
        : shared_(std::move(shared)), changed_(std::move(changed)) {}

    EvolutionDesktop(const EvolutionDesktop&) = delete;
    EvolutionDesktop& operator=(const EvolutionDesktop&) = delete;

    /// Reaches the registry of sources, also again after the bus has ended. First of all calls. Then waits
    /// for `longestWaitForAccounts` at most until each account on the Internet has its sources, which it
    /// makes after the registry has started. Fails with `RegistryUnreachable` or `Abandoned`.
    Result<void> open(GCancellable* cancellable);

    /// The enabled ones, by name.
    [[nodiscard]] std::vector<Source> sources(SourceKind kind) const;
    [[nodiscard]] std::optional<std::string> defaultSource(SourceKind kind) const;

    /// A service that was lost since the last call is opened anew: `work` gets the client (`ECalClient` or
    /// `EBookClient`), an error and the cancellable. It is called a second time if the service was lost
    /// during the first one, so it must be harmless to repeat. A source that is gone fails with
    /// `SystemTrouble::notFound`.
    template <class T, class Work>
    Result<T> with(SourceKind kind, const std::string& id, GCancellable* cancellable, Work work) {
        for (bool again : {true, false}) {
            auto client = this->client(kind, id, cancellable);
            if (!client && again && !isFinal(client.error())) continue;
            if (!client) return std::unexpected(client.error());
            GLibError error;
            Result<T> result = work(*client, error);
            if (!error.get() || !isLost(error)) return result;
            clients_.erase({kind, id});
            if (!again) return result;
        }
        std::unreachable();
    }

  private:
    /// A client whose signals a desktop hears.
    struct HeardClient {
        HeardClient(EClient* made, EvolutionDesktop& desktop);

        ~HeardClient() { g_signal_handlers_disconnect_by_data(client.get(), hearer); }

        HeardClient(const HeardClient&) = delete;
        HeardClient& operator=(const HeardClient&) = delete;

        GLibHandle<EClient> client;
        EvolutionDesktop* hearer;
    };

    static bool isLost(const GLibError& error);
    static bool isFinal(const Error& error);
    static void died(EClient* client, gpointer self);
    static void becameWritable(EClient* client, GParamSpec*, gpointer self);

    void waitForAccounts(GCancellable* cancellable) const;
    [[nodiscard]] bool hasAllOfItsAccounts() const;
    Result<EClient*> client(SourceKind kind, const std::string& id, GCancellable* cancellable);

    std::shared_ptr<EvolutionRegistry> shared_;
    std::function<void()> changed_;
    EvolutionRegistry::Opened registry_;
    std::map<std::pair<SourceKind, std::string>, std::unique_ptr<HeardClient>> clients_;
};

/// What several sources answer to one question. One that fails does not hide what the others have, and one
/// that is gone has nothing.
class AnswersTogether {
  public:
    /// Returns false if the call was cancelled, so that the rest need not be asked.
    template <class T> bool add(const Result<T>& answer) {
        return add(answer ? std::optional<Error>() : answer.error());
    }

    /// Fails if none has answered, with the first failure, or if the call was cancelled.
    [[nodiscard]] Result<void> outcome() const;

  private:
    bool add(const std::optional<Error>& failure);

    std::optional<Error> failure_;
    bool anyAnswered_ = false;
};

} // namespace morvex

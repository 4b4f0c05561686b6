#pragma once

#include "platform/linux/GLibHandle.h"
#include "shared/base/Error.h"

#include <libedataserver/libedataserver.h>

#include <cstdint>
#include <functional>
#include <memory>

namespace morvex {

/// The registry cannot be reached.
struct RegistryUnreachable {
    Error cause;

    [[nodiscard]] Sentence popis() const { return cause.popis(); }
};

/// The failure of a call, in the service's own words as far as a reader can see them; `Abandoned` when the
/// call was cancelled.
Error evolutionFailure(const GLibError& error);

/// The registry of the desktop's sources, on a thread of its own that makes no other calls: the library has
/// one registry in a process, whose signals come on the thread that has made it.
class EvolutionRegistry {
  public:
    struct Opened {
        std::shared_ptr<ESourceRegistry> sources; ///< for any thread; given back before the next `open`
        std::uint64_t number = 0;                 ///< another one after the session bus has ended
    };

    /// `changed` is called on the thread when sources come, go or change.
    explicit EvolutionRegistry(std::function<void()> changed);

    ~EvolutionRegistry() { end(); }

    EvolutionRegistry(const EvolutionRegistry&) = delete;
    EvolutionRegistry& operator=(const EvolutionRegistry&) = delete;

    /// Waits for two seconds at most; a thread that still blocks then ends by itself later.
    void end();

    /// From another thread, which it blocks until there is an answer, or a moment after `cancellable` was
    /// cancelled. Fails with `RegistryUnreachable` or `Abandoned`.
    Result<Opened> open(GCancellable* cancellable);

  private:
    struct State;

    static void run(const std::shared_ptr<State>& state);

    std::shared_ptr<State> state_;
};

} // namespace morvex

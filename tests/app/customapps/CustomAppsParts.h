#pragma once

#include "app/customapps/MacCustomAppsService.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/MemoryVault.h"
#include "platform/memory/ScriptedHttp.h"
#include "platform/memory/ScriptedRandom.h"
#include "shared/base/Require.h"
#include "tests/support/TemporaryFolder.h"

namespace morvex {

/// What the service of custom apps works with, all of it on one executor of the test.
class CustomAppsParts {
  public:
    explicit CustomAppsParts(ManualExecutor& executor)
        : keychain(vault, executor),
          seen(support.path(), {executor, executor, clock}),
          scope(executor),
          executor_(executor) {}

    ~CustomAppsParts() {
        scope.stop();
        require(executor_.run(scope.join()), "a refresh does not end");
        executor_.run(seen.saved());
    }

    CustomAppsParts(const CustomAppsParts&) = delete;
    CustomAppsParts& operator=(const CustomAppsParts&) = delete;

    MacCustomAppsService::Services services(UserDefaults& defaults) { return services(defaults, keychain); }

    MacCustomAppsService::Services services(UserDefaults& defaults, const Keychain& other) {
        return {defaults, other, random, http, executor_, clock, seen, scope};
    }

    TemporaryFolder support;
    ManualClock clock;
    MemoryVault vault;
    ScriptedRandom random;
    ScriptedHttp http;
    Keychain keychain;
    SeenTools seen;
    TaskScope scope;

  private:
    ManualExecutor& executor_;
};

} // namespace morvex

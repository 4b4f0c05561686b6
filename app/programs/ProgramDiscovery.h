#pragma once

#include "foundation/Clock.h"
#include "foundation/OneShot.h"
#include "foundation/Task.h"
#include "platform/ports/ProcessLauncher.h"

#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace morvex {

/// Finds command-line tools as the user's terminal would, although this program inherits little of the user's
/// search path. One object for each process; safe from any thread. References outlive it. Reads the disk on
/// the workers.
class ProgramDiscovery {
  public:
    struct Account {
        Environment environment; ///< this program's own
        std::string home;        ///< home directory of the account, whatever the environment says
    };

    struct FoundProgram {
        std::string binary;
        std::string directory; ///< the entry of the search path that contains it
        bool operator==(const FoundProgram&) const = default;
    };

    enum class Cache { use, refresh };

    /// `stop` ends the programs that are being asked; what they would have said is then missing.
    ProgramDiscovery(ProcessLauncher& launcher, Clock& clock, Executor& workers, Account account,
                     std::stop_token stop = {})
        : launcher_(launcher),
          clock_(clock),
          workers_(workers),
          account_(std::move(account)),
          stop_(std::move(stop)) {}

    /// The search path, joined with ":". Resolved once in the life of this object, however many callers ask
    /// at the same time. That runs the login shell and the package managers, which take up to 8 seconds each,
    /// plus the time to stop them.
    Task<std::string> prihlasovaciPath(Cache cache = Cache::use);

    /// Finds the first of the names that exists anywhere.
    Task<std::optional<FoundProgram>> najdiBinarku(std::vector<std::string> jmena);

    /// The environment in which a tool gives plain text and asks nothing.
    Task<Environment> prostrediNastroju();

  private:
    Task<std::string> detectPath();
    Task<std::vector<std::string>> zeShellu();
    Task<std::vector<std::string>> fromPackageManagers(std::string path);
    Task<std::string> lastLineOf(OutsideProgram program);
    [[nodiscard]] std::vector<std::string> knownDirectories() const;
    [[nodiscard]] std::string ownVariable(const std::string& variable) const;

    ProcessLauncher& launcher_;
    Clock& clock_;
    Executor& workers_;
    const Account account_;
    const std::stop_token stop_;
    std::mutex zamek_;
    std::optional<std::string> path_;
    bool isDetecting_ = false;
    std::vector<std::shared_ptr<OneShot<bool>>> cekajici_; ///< wait for another caller to resolve the path
};

} // namespace morvex

#pragma once

#include "app/execution/AllowedFolders.h"
#include "app/execution/TerminalChyba.h"
#include "app/programs/ProgramDiscovery.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace morvex {

/// Runs commands with which an assistant inspects this computer. There is no shell: a program and its
/// arguments pass the gates and are started unchanged, so there are no pipes, redirections or globs. A
/// refused command stays refused. Calls may overlap; they are made on the main thread, and the disk is
/// accessed on the workers.
class TerminalBridge {
  public:
    using Chyba = TerminalChyba;

    struct Services {
        ProcessLauncher& launcher;
        Clock& clock;
        ProgramDiscovery& discovery;
        Executor& workers;
    };

    struct Vysledek {
        std::string vystup; ///< the first 6,000 characters
        std::string chyby;  ///< the first 2,000 characters
        std::int32_t status = 0;
    };

    /// Returns the folders that are allowed at the moment of the call.
    using AllowedNow = std::function<AllowedFolders()>;

    explicit TerminalBridge(Services services) : services_(services) {}

    /// A nonzero exit status is a normal result, also for a command that was stopped after a minute. Fails
    /// with `Chyba`, with `SouboryChyba` for an argument that is a path, if the launch fails, and with
    /// `TalkSpanError::Cancelled` if `stop` was requested before the launch; afterwards `stop` cancels the
    /// command. The folders that are allowed when the command starts apply.
    Task<Result<Vysledek>> spustitPrikaz(std::string program, std::vector<std::string> argumenty,
                                         std::optional<std::string> slozka, AllowedNow povolene,
                                         std::stop_token stop);

  private:
    /// The working folder, after it and all paths among the arguments were found to be allowed.
    Task<Result<std::string>> checkPlaces(std::vector<std::string> argumenty,
                                          std::optional<std::string> slozka, AllowedNow povolene);
    Task<Result<Vysledek>> spust(OutsideProgram program, std::stop_token stop);

    Services services_;
};

} // namespace morvex

#pragma once

#include "app/execution/PovoleneSlozky.h"
#include "app/execution/TerminalChyba.h"
#include "app/programs/ProgramDiscovery.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace morvex {

/// Runs commands that look at things for an assistant. There is no shell: a program and its arguments pass
/// the gates and are started as they are, so that pipes, redirection and globs do not exist. A refused
/// command stays refused. Calls do not exclude each other; they are made on the main thread, and the disk is
/// touched on the workers.
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

    /// The allowed folders as they stand at the moment of the call.
    using NyniPovolene = std::function<PovoleneSlozky()>;

    explicit TerminalBridge(Services services) : services_(services) {}

    /// A status that is not zero is a result like any other, also that of a command that was stopped after a
    /// minute. Fails with `Chyba`, with `SouboryChyba` for an argument that is a path, when the launch fails,
    /// and with `TalkSpanError::Cancelled` when `stop` was requested before it; later `stop` cancels the
    /// command. The folders are judged as they stand when the command starts.
    Task<Result<Vysledek>> spustitPrikaz(std::string program, std::vector<std::string> argumenty,
                                         std::optional<std::string> slozka, NyniPovolene povolene,
                                         std::stop_token stop);

  private:
    /// The working folder, once it and all paths among the arguments are allowed.
    Task<Result<std::string>> overMista(std::vector<std::string> argumenty, std::optional<std::string> slozka,
                                        NyniPovolene povolene);
    Task<Result<Vysledek>> spust(OutsideProgram program, std::stop_token stop);

    Services services_;
};

} // namespace morvex

#pragma once

#include "app/execution/PovoleneSlozky.h"
#include "app/execution/SouboryChyba.h"
#include "foundation/Task.h"
#include "shared/base/Error.h"

#include <cstddef>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace morvex {

/// Searches, reads and writes files for an assistant, in allowed folders only: never credentials, never a
/// replaced file nor one that a program obeys, never more than can be read aloud. Has no state; the disk is
/// touched on the worker, against the folders as they were allowed at the call. Failures are `Chyba` unless
/// told otherwise.
class SouboryBridge {
  public:
    using Chyba = SouboryChyba;

    /// The largest file that is read, in bytes.
    static constexpr std::size_t ctenyLimit = 256 * 1024;

    explicit SouboryBridge(Executor& worker) : worker_(worker) {}

    /// The text of a file; invalid UTF-8 is repaired.
    Task<Result<std::string>> precti(std::string cesta, std::optional<std::string> slozka,
                                     PovoleneSlozky slozky);

    /// Makes a new file and the folders above it, unless a program would obey it. Gives its name.
    Task<Result<std::string>> zapis(std::string cesta, std::string obsah, std::optional<std::string> slozka,
                                    PovoleneSlozky slozky);

    /// At most `limit` files whose name contains `dotaz`, as paths relative to the folder, in the order of
    /// the disk. Fails with `TalkSpanError::Cancelled` when `stop` is requested before the end.
    Task<Result<std::vector<std::string>>> hledej(std::optional<std::string> dotaz,
                                                  std::optional<std::string> slozka, int limit,
                                                  PovoleneSlozky slozky, std::stop_token stop);

  private:
    Executor& worker_;
};

} // namespace morvex

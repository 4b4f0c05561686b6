#pragma once

#include "app/execution/AllowedFolders.h"
#include "app/execution/SouboryChyba.h"
#include "foundation/Task.h"
#include "shared/base/Error.h"

#include <cstddef>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace morvex {

/// Searches, reads and writes files for an assistant, only in allowed folders. It never touches credentials,
/// never replaces a file, never writes a file that a program obeys, and never reads more than can be read
/// aloud. Stateless; the disk is accessed on the worker, with the folders that were allowed at the call.
/// Fails with `Chyba` unless stated otherwise.
class SouboryBridge {
  public:
    using Chyba = SouboryChyba;

    /// The largest file that is read, in bytes.
    static constexpr std::size_t readLimit = 256 * 1024;

    explicit SouboryBridge(Executor& worker) : worker_(worker) {}

    /// The text of a file; invalid UTF-8 is repaired.
    Task<Result<std::string>> precti(std::string cesta, std::optional<std::string> slozka,
                                     AllowedFolders slozky);

    /// Creates a new file and its parent folders, unless a program would obey the file. Returns its name.
    Task<Result<std::string>> zapis(std::string cesta, std::string obsah, std::optional<std::string> slozka,
                                    AllowedFolders slozky);

    /// At most `limit` files whose name contains `dotaz`, as paths relative to the folder, in the order of
    /// the disk. Fails with `TalkSpanError::Cancelled` if `stop` is requested before the end.
    Task<Result<std::vector<std::string>>> hledej(std::optional<std::string> dotaz,
                                                  std::optional<std::string> slozka, int limit,
                                                  AllowedFolders slozky, std::stop_token stop);

  private:
    Executor& worker_;
};

} // namespace morvex

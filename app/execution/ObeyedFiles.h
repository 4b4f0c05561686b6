#pragma once

#include "platform/posix/BeneathFolder.h"
#include "shared/base/Error.h"

#include <string>
#include <string_view>

/// Files that a program runs or obeys although nobody said yes to them: an assistant does not write them.
/// Fails with `SouboryChyba`.
namespace morvex::ObeyedFiles {

/// Whether a name on the way from the allowed folder to the file is in the table of `docs/security.md`.
Result<void> checkNames(std::string_view belowFolder);

/// Whether the folder, once it holds this, is a bare repository of git, which is recognized by what it holds.
/// Fails with `SystemError` when the folder cannot be listed.
Result<void> checkRepository(int folder, const std::string& name, BeneathFolder::Held held);

} // namespace morvex::ObeyedFiles

#pragma once

#include "relay/Database.h"

namespace morvex {

/// Creates the tables in an empty file, upgrades those of an earlier version, and refuses every other file.
/// The time depends on the file's size only if the file is small or of an earlier version. The failure's text
/// says what is wrong with the file.
Result<void> bringToSchema(Database& database);

/// Reads every page. Fails when the file is damaged.
Result<void> checkWhole(Database& database);

/// The first value of the first row; 0 if there is no row.
Result<std::int64_t> number(Database& database, std::string_view sql);

} // namespace morvex

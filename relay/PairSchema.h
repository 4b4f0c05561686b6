#pragma once

#include "relay/Database.h"

namespace morvex {

/// Makes the tables of an empty file, brings those of an earlier version to the present one, and refuses
/// every other file. Takes time by the size of the file only where it is small or of an earlier version. The
/// failure's text says what is wrong with it.
Result<void> bringToSchema(Database& database);

/// Reads every page. Fails when the file is damaged.
Result<void> checkWhole(Database& database);

/// The first value of the first row; 0 without one.
Result<std::int64_t> number(Database& database, std::string_view sql);

} // namespace morvex

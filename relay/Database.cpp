#include "relay/Database.h"

#include "platform/posix/base/PrivateFile.h"
#include "shared/base/Try.h"

#include <sqlite3.h>

#include <system_error>

namespace morvex {

namespace {

/// Another process that holds the database is waited for this long.
constexpr int busyMilliseconds = 2000;

std::unexpected<Error> failure(sqlite3* database) {
    return fail(TextError{sqlite3_errmsg(database)});
}

} // namespace

Rows::~Rows() {
    if (!statement_) return;
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
}

Result<bool> Rows::next() {
    const int code = sqlite3_step(statement_);
    if (code == SQLITE_ROW) return true;
    if (code == SQLITE_DONE) return false;
    return failure(sqlite3_db_handle(statement_));
}

std::string Rows::text(int column) const {
    return std::string{asText(blob(column))};
}

Bytes Rows::blob(int column) const {
    const auto* bytes = static_cast<const std::uint8_t*>(sqlite3_column_blob(statement_, column));
    return {bytes, bytes + sqlite3_column_bytes(statement_, column)};
}

std::int64_t Rows::integer(int column) const {
    return sqlite3_column_int64(statement_, column);
}

Result<Database> Database::open(const std::string& path) {
    // SQLite itself would make the file readable for everybody.
    if (path != ":memory:")
        if (const auto error = makePrivateFile(path)) return fail(TextError{error.message()});
    sqlite3* handle = nullptr;
    const int code = sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr);
    Database database{handle};
    if (code != SQLITE_OK) return failure(handle);
    sqlite3_busy_timeout(handle, busyMilliseconds);
    return database;
}

Result<sqlite3_stmt*> Database::prepare(std::string_view sql) {
    if (const auto found = statements_.find(sql); found != statements_.end()) return found->second.get();
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v3(database_.get(), sql.data(), static_cast<int>(sql.size()),
                                        SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    if (code != SQLITE_OK) return failure(database_.get());
    statements_[sql].reset(statement);
    return statement;
}

Result<void> Database::execute(const std::string& sql) {
    if (sqlite3_exec(database_.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        return failure(database_.get());
    return {};
}

void Database::interrupt() {
    sqlite3_interrupt(database_.get());
}

std::int64_t Database::changedRows() const {
    return sqlite3_changes64(database_.get());
}

void Database::bind(sqlite3_stmt* statement, int place, std::string_view text) {
    sqlite3_bind_text64(statement, place, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void Database::bind(sqlite3_stmt* statement, int place, ByteView blob) {
    sqlite3_bind_blob64(statement, place, blob.data(), blob.size(), SQLITE_TRANSIENT);
}

void Database::bind(sqlite3_stmt* statement, int place, std::int64_t number) {
    sqlite3_bind_int64(statement, place, number);
}

void Database::Close::operator()(sqlite3* database) const {
    sqlite3_close_v2(database);
}

void Database::Finalize::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

} // namespace morvex

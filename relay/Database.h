#pragma once

#include "shared/base/Bytes.h"
#include "shared/base/Error.h"
#include "shared/base/Try.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

struct sqlite3;
struct sqlite3_stmt;

namespace morvex {

/// One run of a statement: at most one at a time of each, and it ends with this object.
class Rows {
  public:
    explicit Rows(sqlite3_stmt* statement) : statement_(statement) {}

    Rows(Rows&& other) noexcept : statement_(std::exchange(other.statement_, nullptr)) {}

    Rows& operator=(Rows&&) = delete;
    ~Rows();

    /// Goes to the first row, or the next; false when there is none.
    [[nodiscard]] Result<bool> next();
    [[nodiscard]] std::string text(int column) const;
    [[nodiscard]] Bytes blob(int column) const;
    [[nodiscard]] std::int64_t integer(int column) const;

  private:
    sqlite3_stmt* statement_;
};

/// An SQLite database, used from one thread. Each statement is compiled at its first use and kept; its text
/// is a literal, in which the given values take the places of the question marks. Failures carry SQLite's own
/// words.
class Database {
  public:
    /// A missing file is made with access for the owner only; its folder must be there. `:memory:` has no
    /// file.
    static Result<Database> open(const std::string& path);

    template <class... Value> [[nodiscard]] Result<Rows> rows(std::string_view sql, const Value&... values) {
        TRY(auto*, statement, prepare(sql));
        int place = 0;
        (bind(statement, ++place, values), ...);
        return Rows{statement};
    }

    /// Statements that give no rows. The number of rows that were inserted, deleted or updated.
    template <class... Value>
    [[nodiscard]] Result<std::int64_t> change(std::string_view sql, const Value&... values) {
        TRY(auto, started, rows(sql, values...));
        CHECK(started.next());
        return changedRows();
    }

    /// Any number of statements without values, not kept.
    [[nodiscard]] Result<void> execute(const std::string& sql);

    /// Carries out `work`, which gives a `Result`, as a whole or not at all.
    template <class Work> auto transaction(const Work& work) -> decltype(work()) {
        CHECK(execute("BEGIN IMMEDIATE"));
        auto done = work();
        if (done) {
            if (const auto committed = execute("COMMIT"); !committed)
                done = std::unexpected(committed.error());
        }
        if (!done) std::ignore = execute("ROLLBACK");
        return done;
    }

    /// From any thread: what is being carried out fails.
    void interrupt();

  private:
    struct Close {
        void operator()(sqlite3* database) const;
    };

    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };

    explicit Database(sqlite3* database) : database_(database) {}

    Result<sqlite3_stmt*> prepare(std::string_view sql);
    [[nodiscard]] std::int64_t changedRows() const;
    static void bind(sqlite3_stmt* statement, int place, std::string_view text);
    static void bind(sqlite3_stmt* statement, int place, ByteView blob);
    static void bind(sqlite3_stmt* statement, int place, std::int64_t number);

    std::unique_ptr<sqlite3, Close> database_;
    std::unordered_map<std::string_view, std::unique_ptr<sqlite3_stmt, Finalize>> statements_;
};

} // namespace morvex

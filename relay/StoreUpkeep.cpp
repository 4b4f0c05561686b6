#include "relay/StoreUpkeep.h"

#include "platform/posix/base/QuietThread.h"
#include "shared/base/Try.h"

#include <chrono>
#include <utility>

namespace morvex {

namespace {

/// Pause between two steps, so that the relay's own changes of the file get their turn.
constexpr std::chrono::milliseconds betweenSteps{20};
constexpr std::chrono::minutes betweenRounds{10};
/// How long logins are collected before they are written together.
constexpr std::chrono::seconds collecting{1};

} // namespace

Result<std::unique_ptr<StoreUpkeep>> StoreUpkeep::create(const std::filesystem::path& file, RelayLog log) {
    TRY(auto, store, PairStore::open(file));
    return std::unique_ptr<StoreUpkeep>{new StoreUpkeep{std::move(store), std::move(log)}};
}

StoreUpkeep::~StoreUpkeep() {
    if (!thread_.joinable()) return;
    {
        const std::lock_guard lock{mutex_};
        ends_ = true;
        news_.notify_one();
    }
    store_.interrupt();
    thread_.join();
    keepUsed(std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now()));
}

void StoreUpkeep::start() {
    thread_ = startQuietThread([this] { run(); });
}

void StoreUpkeep::used(const PairID& pair) {
    const std::lock_guard lock{mutex_};
    if (used_.size() < maxUsed) used_.insert(pair);
    news_.notify_one();
}

bool StoreUpkeep::step(Date now) {
    keepUsed(now);
    if (succeeded(store_.sweep(now), "sweeping")) return true;
    return succeeded(store_.shrink(), "shrinking");
}

void StoreUpkeep::keepUsed(Date now) {
    const auto pairs = takeUsed();
    if (pairs.empty()) return;
    if (const auto kept = store_.keep(pairs, now); !kept) complain("keeping pairs", kept.error());
}

bool StoreUpkeep::succeeded(const Result<bool>& done, std::string_view what) {
    if (!done) complain(what, done.error());
    return done && *done;
}

void StoreUpkeep::complain(std::string_view what, const Error& error) {
    // A call interrupted at the end of the program has not failed.
    if (!isEnding()) log_(std::string{what} + " failed: " + error.popis().czech());
}

bool StoreUpkeep::isEnding() {
    const std::lock_guard lock{mutex_};
    return ends_;
}

std::vector<PairID> StoreUpkeep::takeUsed() {
    const std::lock_guard lock{mutex_};
    std::vector<PairID> taken;
    while (!used_.empty()) taken.push_back(std::move(used_.extract(used_.begin()).value()));
    return taken;
}

void StoreUpkeep::run() {
    if (const auto whole = store_.check(); !whole) complain("checking the database", whole.error());
    std::unique_lock lock{mutex_};
    while (!ends_) {
        lock.unlock();
        const auto now = std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now());
        const bool hasMore = step(now);
        lock.lock();
        const auto mustEnd = [&] { return ends_; };
        if (!hasMore) news_.wait_for(lock, betweenRounds, [&] { return ends_ || !used_.empty(); });
        news_.wait_for(lock, hasMore ? betweenSteps : collecting, mustEnd);
    }
}

} // namespace morvex

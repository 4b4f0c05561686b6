#pragma once

#include "foundation/Clock.h"
#include "foundation/Executor.h"
#include "foundation/OneShot.h"
#include "foundation/TaskScope.h"
#include "shared/base/Error.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

namespace morvex {

/// What stores need for saving. All of it must outlive them.
struct Saving {
    Executor& home;    ///< where the store runs
    Executor& storage; ///< where files are written; may block
    Clock& clock;
};

/// Saves one store, one save at a time, on the storage thread. Requests during a save are collected into the
/// next one, so that many small changes cost few saves:
///
///     idle ──request──▶ under way ──end──▶ idle, or the next save when somebody waits for it
///                       │  ▲
///                       └──┘ request: waits for the next save
///
/// A save writes the whole file, so frequent requests would make a large file be rewritten faster than it
/// grows. The next save of such a file waits until a quarter of it is new, `hurry` is called, or `pause` has
/// passed since the last save.
///
/// Owned by the store, on the store's thread. The owner awaits `settled` before it is destroyed.
class SaveQueue {
  public:
    static constexpr std::size_t smallFile = 256 * 1024; ///< bytes; saved without waiting
    static constexpr Clock::Duration pause = std::chrono::milliseconds(100);

    struct Save {
        std::size_t bytes = 0;                         ///< approximate size of the file
        std::move_only_function<Result<void>()> write; ///< runs on the storage thread
    };

    struct Store {
        /// Takes a snapshot of the store. Later changes belong to the next save.
        std::function<Save()> begin;
        /// The save that `begin` returned has ended; the tickets for it are answered right after.
        std::function<void(const Result<void>&)> end;
    };

    using Ticket = std::shared_ptr<OneShot<Result<void>>>;

    SaveQueue(Saving saving, Store store);
    ~SaveQueue();
    SaveQueue(const SaveQueue&) = delete;
    SaveQueue& operator=(const SaveQueue&) = delete;

    /// Requests a save of the current store; about `growth` bytes of it are new. Tickets are answered in the
    /// order of their requests.
    Ticket request(std::size_t growth);

    /// The state of a change in memory: on the disk, part of the running save, or waiting for a later one.
    enum class Standing { saved, underWay, waiting };

    /// Completes with the save that contains the change, and requests one if necessary. Returns whether the
    /// change is then on the disk.
    Task<bool> onDisk(Standing standing);
    static Task<bool> onDisk(Ticket ticket);

    /// Begins the next save, if one was requested, without waiting for more changes.
    void hurry();

    /// Calls `hurry`, and resumes when everything requested so far has been tried.
    Task<void> settled();

  private:
    static Ticket addTo(std::vector<Ticket>& tickets);
    void consider();
    [[nodiscard]] bool isDue() const;
    void begin();
    Task<void> save(std::move_only_function<Result<void>()> write);
    void waitForPause();
    void forgetPause();

    Saving saving_;
    Store store_;
    std::vector<Ticket> waiting_;
    std::vector<Ticket> underWay_;
    bool isUnderWay_ = false;
    bool isHurried_ = false;
    std::size_t bytes_ = 0; ///< size of the last save
    std::size_t growth_ = 0;
    Clock::Duration lastEnd_{0};
    Clock::TimerId timer_ = 0; ///< timer of the pause, 0 if there is none
    /// The timer holds it weakly, since it may fire after this object is destroyed.
    std::shared_ptr<SaveQueue*> self_ = std::make_shared<SaveQueue*>(this);
    TaskScope scope_;
};

} // namespace morvex

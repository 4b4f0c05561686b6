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

/// What stores save with. All of it outlives them.
struct Saving {
    Executor& home;    ///< where the store lives
    Executor& storage; ///< where it is written, which may block
    Clock& clock;
};

/// Saves one store, one save at a time, on the storage thread. Whatever is asked for while a save is under
/// way is gathered into the next one, so that many small changes cost few saves:
///
///     idle ──request──▶ under way ──end──▶ idle, or the next save when somebody waits for it
///                       │  ▲
///                       └──┘ request: waits for the next save
///
/// A save writes the whole file, so a large one that is asked for again and again would be written more often
/// than it grows. The next save of such a file waits until a quarter of it is new, somebody is in a hurry, or
/// `pause` has passed since the last one.
///
/// Owned by the store, on the store's thread. The owner awaits `settled` before it goes.
class SaveQueue {
  public:
    static constexpr std::size_t smallFile = 256 * 1024; ///< bytes that are never waited with
    static constexpr Clock::Duration pause = std::chrono::milliseconds(100);

    struct Save {
        std::size_t bytes = 0;                         ///< of the file, about
        std::move_only_function<Result<void>()> write; ///< runs on the storage thread
    };

    struct Store {
        /// The store as it stands now. What changes later is the next save's.
        std::function<Save()> begin;
        /// The save that `begin` gave has ended; those who wait for it are told right after.
        std::function<void(const Result<void>&)> end;
    };

    using Ticket = std::shared_ptr<OneShot<Result<void>>>;

    SaveQueue(Saving saving, Store store);
    ~SaveQueue();
    SaveQueue(const SaveQueue&) = delete;
    SaveQueue& operator=(const SaveQueue&) = delete;

    /// Asks for a save of the store as it stands, about `growth` bytes of which are new. Tickets are answered
    /// in the order of their request.
    Ticket request(std::size_t growth);

    /// How a change that was made in memory stands: on the disk, part of the save that is under way, or
    /// later.
    enum class Standing { saved, underWay, waiting };

    /// Ends with the save that holds such a change; one that nobody asked for is asked for. Whether the
    /// change is on the disk then.
    Task<bool> onDisk(Standing standing);
    static Task<bool> onDisk(Ticket ticket);

    /// Begins the next save, if one was asked for, without waiting for more changes.
    void hurry();

    /// Hurries, and resumes when all that was asked for until now has been tried.
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
    std::size_t bytes_ = 0; ///< of the last save
    std::size_t growth_ = 0;
    Clock::Duration lastEnd_{0};
    Clock::TimerId timer_ = 0; ///< of the pause, 0 without one
    /// Known to the timer, which may ring when this object is gone.
    std::shared_ptr<SaveQueue*> self_ = std::make_shared<SaveQueue*>(this);
    TaskScope scope_;
};

} // namespace morvex

#pragma once

#include "foundation/SaveQueue.h"
#include "shared/base/Uuid.h"
#include "shared/wire/ArchivedList.h"
#include "shared/wire/Json.h"

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace morvex {

/// A record in memory, shared with the save that is under way.
template <class Record> struct Kept {
    std::shared_ptr<const Record> record;
    std::size_t bytes = 0; ///< that it takes in the file
};

/// The records of a store whose file is written later, and what becomes of them when that fails. In memory a
/// change counts at once. A save takes a snapshot, which shares the records; its end tells about all that was
/// changed before the snapshot and about nothing later.
///
/// A record of the phone whose save fails is put back to the version before it, or removed when there was
/// none: the phone still has it. A change of this computer is never put back, and nothing is put back under
/// it: who changes a received record here makes it an own one. When several versions of one record were
/// received, in one save or in two, what comes back is the last that is on the disk or was made here.
///
/// Order of calls: `beginSave`, changes of any kind, then `saved` or `failed`, and so on.
template <class Record> class RecordsAhead {
  public:
    using Kept = morvex::Kept<Record>;
    using List = std::vector<Kept>;

    /// What stands in the file, in its order.
    explicit RecordsAhead(std::vector<Record> saved) {
        for (auto& record : saved) append(keep(std::move(record)));
    }

    /// In the order of their coming.
    [[nodiscard]] const List& all() const { return all_; }

    /// Bytes that all of them take in the file.
    [[nodiscard]] std::size_t bytes() const { return bytes_; }

    /// The first with this id, or null. Valid until the next change.
    [[nodiscard]] const Record* find(const Uuid& id) const {
        const auto found = places_.find(id);
        return found == places_.end() ? nullptr : all_[found->second].record.get();
    }

    /// A change made here: replaces the record with its id or comes last.
    void change(Record record) {
        const auto id = record.id;
        received_.erase(id);
        receivedUnderWay_.erase(id);
        put(id, keep(std::move(record)));
    }

    /// The same for a record of the phone.
    void receive(Record record) {
        const auto id = record.id;
        if (!received_.contains(id)) received_.emplace(id, present(id));
        put(id, keep(std::move(record)));
    }

    using Standing = SaveQueue::Standing;

    /// Whether the record is on the disk as it is in memory.
    [[nodiscard]] Standing standing(const Uuid& id) const {
        if (changed_.contains(id)) return Standing::waiting;
        return changedUnderWay_.contains(id) ? Standing::underWay : Standing::saved;
    }

    /// Whether the record in memory is one of the phone that is not on the disk yet.
    [[nodiscard]] bool isReceivedAhead(const Uuid& id) const {
        return received_.contains(id) || receivedUnderWay_.contains(id);
    }

    /// What is to be saved now.
    List beginSave() {
        receivedUnderWay_ = std::exchange(received_, {});
        changedUnderWay_ = std::exchange(changed_, {});
        return all_;
    }

    void saved() {
        receivedUnderWay_.clear();
        changedUnderWay_.clear();
        endSave(Standing::saved);
    }

    void failed() {
        changed_.merge(changedUnderWay_);
        changedUnderWay_.clear();
        endSave(Standing::waiting);
        Earlier putBack;
        for (auto& [id, before] : std::exchange(receivedUnderWay_, {})) {
            if (const auto later = received_.find(id); later != received_.end()) {
                later->second = std::move(before);
                continue;
            }
            if (before.standing == Standing::saved) changed_.erase(id);
            putBack.emplace(id, std::move(before));
        }
        if (putBack.empty()) return;
        all_ = without(putBack);
        index();
    }

    /// As it would be if all that was received and waits for a save were refused. Not during a save.
    [[nodiscard]] List withoutReceived() const { return without(received_); }

    /// `list` is `all()` in another order, which holds from now on.
    void reorder(List list) {
        all_ = std::move(list);
        index();
    }

  private:
    struct Before {
        std::optional<Kept> kept; ///< nothing when there was no such record
        Standing standing = Standing::saved;
    };

    using Earlier = std::map<Uuid, Before>;

    static Kept keep(Record record) {
        ArchivedList<Record> one;
        one.records.push_back(std::move(record));
        constexpr std::size_t brackets = 2;
        constexpr std::size_t comma = 1;
        const auto bytes = encode(one).size() - brackets + comma;
        return {std::make_shared<const Record>(std::move(one.records.front())), bytes};
    }

    [[nodiscard]] Before present(const Uuid& id) const {
        const auto found = places_.find(id);
        if (found == places_.end()) return {};
        return {all_[found->second], standing(id)};
    }

    /// What stands below the records that came during the save was a part of it.
    void endSave(Standing outcome) {
        for (auto& [id, before] : received_)
            if (before.standing == Standing::underWay) before.standing = outcome;
    }

    void append(Kept kept) {
        bytes_ += kept.bytes;
        places_.emplace(kept.record->id, all_.size());
        all_.push_back(std::move(kept));
    }

    void put(const Uuid& id, Kept kept) {
        changed_.insert(id);
        const auto found = places_.find(id);
        if (found == places_.end()) return append(std::move(kept));
        bytes_ += kept.bytes;
        bytes_ -= all_[found->second].bytes;
        all_[found->second] = std::move(kept);
    }

    [[nodiscard]] List without(const Earlier& refused) const {
        auto list = all_;
        for (const auto& [id, before] : refused) list[places_.at(id)] = before.kept.value_or(Kept{});
        std::erase_if(list, [](const Kept& kept) { return !kept.record; });
        return list;
    }

    void index() {
        places_.clear();
        bytes_ = 0;
        for (std::size_t i = 0; i < all_.size(); ++i) {
            places_.emplace(all_[i].record->id, i);
            bytes_ += all_[i].bytes;
        }
    }

    List all_;
    std::size_t bytes_ = 0;
    std::map<Uuid, std::size_t> places_; ///< of the first with each id
    Earlier received_;                   ///< of what the next save holds: what was there before
    Earlier receivedUnderWay_;
    std::set<Uuid> changed_; ///< not on the disk, and in no save that is under way
    std::set<Uuid> changedUnderWay_;
};

} // namespace morvex

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

/// A record in memory, shared with the running save.
template <class Record> struct Kept {
    std::shared_ptr<const Record> record;
    std::size_t bytes = 0; ///< bytes it takes in the file
};

/// The records of a store whose file is written later, and the handling of failed saves. A change applies in
/// memory at once. A save takes a snapshot that shares the records; its outcome concerns all changes before
/// the snapshot and none after it.
///
/// A record received from the phone whose save fails is reverted to the version before it, or removed if
/// there was none: the phone still has it. A change made on this computer is never reverted, nor is any
/// version that it is based on: changing a received record here makes it an own one. If several versions of
/// one record were received, in one save or in two, the version restored is the last one that is on the disk
/// or was made here.
///
/// Order of calls: `beginSave`, changes of any kind, then `saved` or `failed`, and so on.
template <class Record> class RecordsAhead {
  public:
    using Kept = morvex::Kept<Record>;
    using List = std::vector<Kept>;

    /// `saved`: the content of the file, in its order.
    explicit RecordsAhead(std::vector<Record> saved) {
        for (auto& record : saved) append(keep(std::move(record)));
    }

    /// In the order of arrival.
    [[nodiscard]] const List& all() const { return all_; }

    /// Bytes that all of them take in the file.
    [[nodiscard]] std::size_t bytes() const { return bytes_; }

    /// The first with this id, or null. Valid until the next change.
    [[nodiscard]] const Record* find(const Uuid& id) const {
        const auto found = places_.find(id);
        return found == places_.end() ? nullptr : all_[found->second].record.get();
    }

    /// Applies a change made here: replaces the record with its id, or appends it.
    void change(Record record) {
        const auto id = record.id;
        received_.erase(id);
        receivedUnderWay_.erase(id);
        put(id, keep(std::move(record)));
    }

    /// The same for a record received from the phone.
    void receive(Record record) {
        const auto id = record.id;
        if (!received_.contains(id)) received_.emplace(id, present(id));
        put(id, keep(std::move(record)));
    }

    using Standing = SaveQueue::Standing;

    /// Whether the current version of the record is on the disk.
    [[nodiscard]] Standing standing(const Uuid& id) const {
        if (changed_.contains(id)) return Standing::waiting;
        return changedUnderWay_.contains(id) ? Standing::underWay : Standing::saved;
    }

    /// Whether the record in memory was received from the phone and is not on the disk yet.
    [[nodiscard]] bool isReceivedAhead(const Uuid& id) const {
        return received_.contains(id) || receivedUnderWay_.contains(id);
    }

    /// Takes the snapshot for a save.
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

    /// The list as it would be if all received records that wait for a save were refused. Not during a save.
    [[nodiscard]] List withoutReceived() const { return without(received_); }

    /// Replaces the order; `list` must be `all()` in another order.
    void reorder(List list) {
        all_ = std::move(list);
        index();
    }

  private:
    struct Before {
        std::optional<Kept> kept; ///< nothing if there was no such record
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

    /// The versions replaced by records that were received during the save were part of that save, so they
    /// get its outcome.
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
    std::map<Uuid, std::size_t> places_; ///< position of the first record with each id
    Earlier received_;                   ///< the versions before the received records of the next save
    Earlier receivedUnderWay_;
    std::set<Uuid> changed_; ///< neither on the disk nor in the running save
    std::set<Uuid> changedUnderWay_;
};

} // namespace morvex

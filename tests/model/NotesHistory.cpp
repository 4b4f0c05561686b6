#include "tests/model/NotesHistory.h"

#include "shared/base/Require.h"
#include "shared/wire/Json.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <fstream>
#include <sstream>

namespace morvex {

namespace {

using namespace std::chrono_literals;

std::string textOf(const MorvexNote& note) {
    return encode(note);
}

/// By id, in the form in which they travel: the computer keeps fractions of seconds.
std::map<Uuid, std::string> byId(const std::vector<MorvexNote>& notes) {
    std::map<Uuid, std::string> found;
    for (const auto& note : notes) found[note.id] = textOf(note);
    return found;
}

std::pair<std::uint64_t, std::int64_t> orderOf(const MorvexNote& note) {
    return {note.revision, wholeSeconds(note.updatedAt)};
}

} // namespace

NotesHistory::NotesHistory(std::uint64_t seed, std::filesystem::path folder)
    : dice_(seed), folder_(std::move(folder)) {
    phoneClock_.advance(std::chrono::milliseconds(dice_.below(6000)));
    macClock_.advance(std::chrono::milliseconds(dice_.below(6000)));
    loadMac();
    phone_.emplace(PhoneRecords::load(folder_, phoneClock_, dice_));
}

void NotesHistory::live(int steps) {
    for (int i = 0; i < steps; ++i) {
        const std::chrono::milliseconds passed(dice_.below(1500));
        macClock_.advance(passed);
        phoneClock_.advance(passed);
        step();
    }
}

void NotesHistory::step() {
    const int chance = dice_.below(100);
    if (chance < 21) return editOnMac();
    if (chance < 42) return editOnPhone();
    if (chance < 58) return deliverToMac();
    if (chance < 74) return deliverToPhone();
    if (chance < 82) return connect();
    if (chance < 87) return breakLink();
    if (chance < 91) return restart();
    if (chance < 96) return isDiskBroken_ ? mendDisk() : breakDisk();
    return chance < 98 ? loseArchive() : pairAnew();
}

void NotesHistory::finish() {
    comeToRest();
    restart();
    comeToRest();
}

void NotesHistory::comeToRest() {
    mendDisk();
    breakLink();
    connect();
    while (!toMac_.empty() || !toPhone_.empty()) {
        deliverToMac();
        deliverToPhone();
    }
    lost_.reset();
}

std::string NotesHistory::difference() const {
    const auto here = byId(mac_->vsechny());
    const auto there = byId(phone_->notes());
    if (here == there) return {};
    std::ostringstream told;
    for (const auto& [id, note] : here) told << "computer " << note << "\n";
    for (const auto& [id, note] : there) told << "phone    " << note << "\n";
    return told.str();
}

std::string NotesHistory::lostEdit() const {
    std::string told;
    for (const auto& [made, edit] : acknowledgedOfPhone_) told += fateOf(made, edit);
    for (const auto& [made, edit] : acknowledgedOfMac_) told += fateOf(made, edit);
    return told;
}

std::string NotesHistory::fateOf(const Revision& made, const MorvexNote& edit) const {
    const auto last = std::ranges::find(mac_->vsechny(), made.first, &MorvexNote::id);
    if (last == mac_->vsechny().end()) return "gone: " + textOf(edit) + "\n";
    if (orderOf(*last) < orderOf(edit)) return "older than " + textOf(edit) + ": " + textOf(*last) + "\n";
    if (orderOf(*last) > orderOf(edit) || last->body == edit.body) return {};
    // Of two that count the same the computer's stays.
    const auto bodies = macBodies_.find(made);
    if (bodies != macBodies_.end() && bodies->second.contains(last->body)) return {};
    return "replaced: " + textOf(edit) + ": " + textOf(*last) + "\n";
}

void NotesHistory::editOnMac() {
    const auto body = "computer " + std::to_string(dice_.below(1'000'000));
    const int what = dice_.below(5);
    auto changed = what < 2 ? mac_->vytvorit(title(), body)
                   : what < 4
                       ? mac_->upravit(title(), dice_.below(2) ? std::optional(title()) : std::nullopt,
                                       dice_.below(4) ? std::optional(body) : std::optional<std::string>(" "))
                       : mac_->smazat(title());
    // A refused text may come after the change of the title; only a title that was not found changes nothing.
    const auto* refused = changed ? nullptr : changed.error().as<NoteError>();
    isUnsaved_ = !changed && (isUnsaved_ || !refused || refused->pripad == NoteError::missingData);
    for (const auto& note : mac_->vsechny()) {
        if (!isUnsaved_ && (!changed || note.id != changed->id)) continue;
        macMade_[{note.id, note.revision}] = note;
        macBodies_[{note.id, note.revision}].insert(note.body);
    }
}

void NotesHistory::editOnPhone() {
    const auto body = "phone " + std::to_string(dice_.below(1'000'000));
    const int what = dice_.below(5);
    auto changed = what < 2   ? phone_->create(title(), body)
                   : what < 4 ? phone_->edit(title(), body, title())
                              : phone_->remove(title());
    if (!changed) return;
    phoneMade_.insert_or_assign({changed->id, changed->revision}, *changed);
    if (isUp_) offer();
}

void NotesHistory::connect() {
    if (isUp_) return;
    isUp_ = true;
    isCaughtUp_ = false;
    told_.clear();
    for (const auto& note : mac_->vsechny())
        toPhone_.push_back(encode(MacPayload{MacPayload::NoteUpdate{note}}));
    offer();
    toMac_.push_back(encode(MacPayload{MacPayload::ToolCall{"mac.status", "{}"}}));
}

void NotesHistory::breakLink() {
    isUp_ = false;
    toMac_.clear();
    toPhone_.clear();
}

void NotesHistory::offer() {
    for (const auto& update : phone_->unconfirmed()) toMac_.push_back(encode(update));
}

void NotesHistory::deliverToMac() {
    if (toMac_.empty()) return;
    const auto payload = decode<MacPayload>(toMac_.front()).value();
    toMac_.pop_front();
    if (payload.as<MacPayload::ToolCall>())
        toPhone_.push_back(encode(MacPayload{MacPayload::ToolResult{true, "{}"}}));
    if (const auto* told = payload.as<MacPayload::NoteAck>()) {
        const Revision revision{told->id, told->revision};
        const auto made = macMade_.find(revision);
        // The phone may have acknowledged an own version that came back, after this one was lost.
        if (made != macMade_.end() && textOf(made->second) == toldLast_.at(revision))
            acknowledgedOfMac_.insert(*made);
    }
    const auto* update = payload.as<MacPayload::NoteUpdate>();
    if (!update) return;
    const bool isTaken = mac_->prijmout(update->note);
    if (isTaken)
        toPhone_.push_back(encode(MacPayload{MacPayload::NoteAck{update->note.id, update->note.revision}}));
    vyzaduj(isTaken || isDiskBroken_, "a note was refused although it can be saved");
}

void NotesHistory::deliverToPhone() {
    if (toPhone_.empty()) return;
    const auto payload = decode<MacPayload>(toPhone_.front()).value();
    toPhone_.pop_front();
    bool isNews = false;
    if (const auto* told = payload.as<MacPayload::NoteUpdate>()) {
        told_.insert(told->note.id);
        toldLast_[{told->note.id, told->note.revision}] = textOf(told->note);
        isNews = phone_->merge(told->note);
        toMac_.push_back(encode(MacPayload{MacPayload::NoteAck{told->note.id, told->note.revision}}));
    }
    if (const auto* told = payload.as<MacPayload::NoteAck>()) {
        told_.insert(told->id);
        isNews = phone_->confirm(told->id, told->revision);
        const auto made = phoneMade_.find({told->id, told->revision});
        if (made != phoneMade_.end()) acknowledgedOfPhone_.insert(*made);
    }
    if (payload.as<MacPayload::ToolResult>() && !std::exchange(isCaughtUp_, true)) {
        isNews = phone_->missedAmong(told_);
        offer();
    }
    if (isNews) vyzaduj(phone_->save().has_value(), "the phone cannot save");
}

void NotesHistory::beginLoss(Side side) {
    if (lost_ && *lost_ != side) comeToRest();
    breakLink();
    mendDisk();
    lost_ = side;
    ++losses_;
}

void NotesHistory::restart() {
    breakLink();
    mendDisk();
    // What was never saved is lost with its program, unless the phone was told of it.
    if (isUnsaved_) beginLoss(Side::mac);
    loadMac();
    phone_.emplace(PhoneRecords::load(folder_, phoneClock_, dice_));
}

void NotesHistory::loseArchive() {
    const auto side = dice_.below(2) ? Side::mac : Side::phone;
    beginLoss(side);
    if (side == Side::mac) {
        removeMacArchive();
    } else {
        std::filesystem::remove(folder_ / "records.json");
        phone_.emplace(PhoneRecords::load(folder_, phoneClock_, dice_));
    }
}

void NotesHistory::pairAnew() {
    breakLink();
    const bool isOtherMac = dice_.below(2) == 1;
    if (isOtherMac) {
        beginLoss(Side::mac);
        removeMacArchive();
    }
    vyzaduj(phone_->forgetConfirmations().has_value(), "the phone cannot save");
}

void NotesHistory::removeMacArchive() {
    std::filesystem::remove(folder_ / "Morvex" / "notes-from-iphone.json");
    loadMac();
}

void NotesHistory::loadMac() {
    isUnsaved_ = false;
    mac_.emplace(PoznamkyStore::load(folder_, macClock_, dice_));
    mac_->priZmene = [this](const MorvexNote& note) {
        if (isUp_) toPhone_.push_back(encode(MacPayload{MacPayload::NoteUpdate{note}}));
    };
}

void NotesHistory::breakDisk() {
    std::error_code missing;
    std::filesystem::rename(folder_ / "Morvex", folder_ / "away", missing);
    std::ofstream(folder_ / "Morvex") << "in the way";
    isDiskBroken_ = true;
}

void NotesHistory::mendDisk() {
    if (!isDiskBroken_) return;
    std::filesystem::remove(folder_ / "Morvex");
    std::error_code missing;
    std::filesystem::rename(folder_ / "away", folder_ / "Morvex", missing);
    isDiskBroken_ = false;
}

std::string NotesHistory::title() {
    static const std::array<std::string, 5> titles{"Nákup", "nakup", "Auto", "Kůň", "KUN"};
    return titles[static_cast<std::size_t>(dice_.below(titles.size()))];
}

} // namespace morvex

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

Uuid NotesHistory::Dice::uuid() {
    std::array<std::uint8_t, 16> bytes{};
    for (auto& byte : bytes) byte = static_cast<std::uint8_t>(engine_());
    return Uuid::fromRandom(bytes);
}

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
    if (chance < 22) return editOnMac();
    if (chance < 44) return editOnPhone();
    if (chance < 60) return deliverToMac();
    if (chance < 76) return deliverToPhone();
    if (chance < 84) return connect();
    if (chance < 90) return breakLink();
    if (chance < 94) return restart();
    return isDiskBroken_ ? mendDisk() : breakDisk();
}

void NotesHistory::comeToRest() {
    mendDisk();
    // Twice: what the first meeting shows to be missing is offered at the second.
    for (int i = 0; i < 2; ++i) {
        breakLink();
        connect();
        while (!toMac_.empty() || !toPhone_.empty()) {
            deliverToMac();
            deliverToPhone();
        }
    }
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
    for (const auto& made : acknowledged_) {
        const auto& edit = phoneMade_.at(made);
        const auto last = std::ranges::find(mac_->vsechny(), made.first, &MorvexNote::id);
        if (last == mac_->vsechny().end()) return "gone: " + textOf(edit);
        if (orderOf(*last) < orderOf(edit)) return "older than " + textOf(edit) + ": " + textOf(*last);
        const bool isTie = orderOf(*last) == orderOf(edit) && !macMade_.contains(made);
        if (isTie && last->body != edit.body) return "replaced: " + textOf(edit) + ": " + textOf(*last);
    }
    return {};
}

void NotesHistory::editOnMac() {
    const auto body = "computer " + std::to_string(dice_.below(1'000'000));
    const int what = dice_.below(5);
    auto changed = what < 2 ? mac_->vytvorit(title(), body)
                   : what < 4
                       ? mac_->upravit(title(), dice_.below(2) ? std::optional(title()) : std::nullopt,
                                       dice_.below(4) ? std::optional(body) : std::optional<std::string>(" "))
                       : mac_->smazat(title());
    if (changed)
        macMade_.insert({changed->id, changed->revision});
    else
        isUnsaved_ = isUnsaved_ || !changed.error().as<NoteError>() ||
                     changed.error().as<NoteError>()->pripad == NoteError::missingData;
    if (isUnsaved_)
        for (const auto& note : mac_->vsechny()) macMade_.insert({note.id, note.revision});
    if (changed) isUnsaved_ = false;
}

void NotesHistory::editOnPhone() {
    const auto body = "phone " + std::to_string(dice_.below(1'000'000));
    const int what = dice_.below(5);
    auto changed = what < 2   ? phone_->create(title(), body)
                   : what < 4 ? phone_->edit(title(), body, title())
                              : phone_->remove(title());
    if (!changed) return;
    phoneMade_[{changed->id, changed->revision}] = *changed;
    if (isUp_) offer();
}

void NotesHistory::connect() {
    if (isUp_) return;
    isUp_ = true;
    for (const auto& note : mac_->vsechny())
        toPhone_.push_back(encode(MacPayload{MacPayload::NoteUpdate{note}}));
    offer();
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
    const auto* update = payload.as<MacPayload::NoteUpdate>();
    if (!update) return;
    const bool isSaved = !isDiskBroken_;
    const bool isTaken = mac_->prijmout(update->note);
    if (isTaken)
        toPhone_.push_back(encode(MacPayload{MacPayload::NoteAck{update->note.id, update->note.revision}}));
    vyzaduj(isTaken || !isSaved, "a note was refused although it can be saved");
}

void NotesHistory::deliverToPhone() {
    if (toPhone_.empty()) return;
    const auto payload = decode<MacPayload>(toPhone_.front()).value();
    toPhone_.pop_front();
    bool isNews = false;
    if (const auto* told = payload.as<MacPayload::NoteUpdate>()) {
        isNews = phone_->merge(told->note);
        toMac_.push_back(encode(MacPayload{MacPayload::NoteAck{told->note.id, told->note.revision}}));
    }
    if (const auto* told = payload.as<MacPayload::NoteAck>()) {
        isNews = phone_->confirm(told->id, told->revision);
        if (phoneMade_.contains({told->id, told->revision})) acknowledged_.insert({told->id, told->revision});
    }
    if (isNews) vyzaduj(phone_->save().has_value(), "the phone cannot save");
}

void NotesHistory::restart() {
    breakLink();
    phone_.emplace(PhoneRecords::load(folder_, phoneClock_, dice_));
    // What was never saved is lost with its program, and nobody can bring it back.
    if (!isUnsaved_ && !isDiskBroken_) loadMac();
}

void NotesHistory::loadMac() {
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

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

/// The notes by id, in their wire form, since the computer keeps fractions of seconds.
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
    loadPhone();
}

Task<Result<void>> NotesHistory::Post::trySend(MacPayload payload, std::string requestID) {
    if (history_.isUp_) history_.toMac_.push_back({encode(payload), std::move(requestID), {}});
    co_return Result<void>{};
}

Task<std::string> NotesHistory::Post::sendMilestone() {
    if (!history_.isUp_) co_return "";
    auto id = "milestone:" + std::to_string(++milestones_);
    (void)co_await trySend({MacPayload::ToolCall{"mac.status", "{}"}}, id);
    co_return id;
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
    if (chance < 96) return brokenDisks_.empty() ? breakDisk(anySide()) : mendDisks();
    return chance < 98 ? loseArchive() : pairAnew();
}

void NotesHistory::finish() {
    comeToRest();
    restart();
    comeToRest();
}

void NotesHistory::comeToRest() {
    mendDisks();
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
    std::ostringstream told;
    for (const auto& summary : phone_->summaries())
        if (!std::ranges::count(summaries_->summaries(), summary.id, &MorvexSummary::id))
            told << "summary  " << encode(summary) << "\n";
    if (here == there) return told.str();
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
    const auto* last = mac_->note(made.first);
    if (!last) return "gone: " + textOf(edit) + "\n";
    if (orderOf(*last) < orderOf(edit)) return "older than " + textOf(edit) + ": " + textOf(*last) + "\n";
    if (orderOf(*last) > orderOf(edit) || last->body == edit.body) return {};
    // Of two versions with equal precedence the computer's is kept.
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
    // A failure can have two causes: if no note has the title, nothing changed; if the text was refused, the
    // title may have changed already.
    const auto* refused = changed ? nullptr : changed.error().as<NoteError>();
    isUnsaved_ = !changed && (isUnsaved_ || !refused || refused->kind == NoteError::missingData);
    for (const auto& note : mac_->vsechny()) {
        if (!isUnsaved_ && (!changed || note.id != changed->id)) continue;
        macMade_[{note.id, note.revision}] = note;
        macBodies_[{note.id, note.revision}].insert(note.body);
    }
}

void NotesHistory::editOnPhone() {
    const auto body = "phone " + std::to_string(dice_.below(1'000'000));
    const int what = dice_.below(6);
    if (what == 5) {
        auto written = phone_->summarize(title(), body, {});
        isPhoneUnsaved_ = isPhoneUnsaved_ || !written;
        if (written) executor_.run(sync_->offer({written->id}));
        return;
    }
    auto changed = what < 2   ? phone_->create(title(), body)
                   : what < 4 ? phone_->edit(title(), body, title())
                              : phone_->remove(title());
    if (!changed) return noteUnsaved();
    phoneMade_.insert_or_assign({changed->id, changed->revision}, *changed);
    isPhoneUnsaved_ = false;
    executor_.run(sync_->offer({changed->id}));
}

void NotesHistory::noteUnsaved() {
    if (!brokenDisks_.contains(Side::phone)) return;
    isPhoneUnsaved_ = true;
    for (const auto& note : phone_->notes()) macBodies_[{note.id, note.revision}].insert(note.body);
}

void NotesHistory::connect() {
    if (isUp_) return;
    isUp_ = true;
    for (const auto& note : mac_->vsechny()) tellPhone({MacPayload::NoteUpdate{note}});
    phoneHears(SecureLink::Stav{{MacAvailability::Pripraveny{}}});
}

void NotesHistory::breakLink() {
    isUp_ = false;
    toMac_.clear();
    toPhone_.clear();
}

void NotesHistory::tellPhone(MacPayload payload, std::string requestID, std::string subject) {
    toPhone_.push_back({encode(payload), std::move(requestID), std::move(subject)});
}

void NotesHistory::phoneHears(Inbox::Event event) {
    require(executor_.run(sync_->heard(std::move(event))), "the phone waits for something");
}

void NotesHistory::deliverToMac() {
    if (toMac_.empty()) return;
    const auto letter = std::move(toMac_.front());
    toMac_.pop_front();
    const auto payload = decode<MacPayload>(letter.json).value();
    bool isTaken = true;
    if (payload.as<MacPayload::ToolCall>()) tellPhone({MacPayload::ToolResult{true, "{}"}}, letter.requestID);
    if (const auto* told = payload.as<MacPayload::NoteAck>()) {
        const Revision revision{told->id, told->revision};
        const auto made = macMade_.find(revision);
        // The phone may have acknowledged an earlier version of its own that was restored after this one was
        // lost.
        if (made != macMade_.end() && textOf(made->second) == toldLast_.at(revision))
            acknowledgedOfMac_.insert(*made);
    }
    if (const auto* update = payload.as<MacPayload::NoteUpdate>()) {
        isTaken = mac_->prijmout(update->note);
        if (isTaken)
            tellPhone({MacPayload::NoteAck{update->note.id, update->note.revision}}, "note-ack",
                      textOf(update->note));
    }
    if (const auto* update = payload.as<MacPayload::SummaryUpdate>()) {
        isTaken = summaries_->prijmout(update->summary);
        if (isTaken) tellPhone({MacPayload::SummaryAck{update->summary.id, update->summary.revision}});
    }
    require(isTaken || brokenDisks_.contains(Side::mac), "a record was refused although it can be saved");
}

void NotesHistory::deliverToPhone() {
    if (toPhone_.empty()) return;
    auto letter = std::move(toPhone_.front());
    toPhone_.pop_front();
    auto payload = decode<MacPayload>(letter.json).value();
    if (const auto* told = payload.as<MacPayload::NoteUpdate>())
        toldLast_[{told->note.id, told->note.revision}] = textOf(told->note);
    if (const auto* told = payload.as<MacPayload::NoteAck>()) {
        const auto made = phoneMade_.find({told->id, told->revision});
        // The version that the phone wrote under this revision may be lost, and another version restored.
        if (made != phoneMade_.end() && textOf(made->second) == letter.subject)
            acknowledgedOfPhone_.insert(*made);
    }
    phoneHears(SecureLink::Zprava{std::move(payload), std::move(letter.requestID)});
}

void NotesHistory::beginLoss(Side side) {
    if (lost_ && *lost_ != side) comeToRest();
    breakLink();
    mendDisks();
    lost_ = side;
    ++losses_;
}

void NotesHistory::restart() {
    breakLink();
    mendDisks();
    // Changes that were never saved are lost with their program, unless the other side received them.
    if (isUnsaved_) beginLoss(Side::mac);
    loadMac();
    if (isPhoneUnsaved_) beginLoss(Side::phone);
    loadPhone();
}

void NotesHistory::loseArchive() {
    const auto side = anySide();
    beginLoss(side);
    if (side == Side::mac) {
        removeMacArchive("notes-from-iphone.json");
    } else {
        std::filesystem::remove(folder_ / "records.json");
        loadPhone();
    }
}

void NotesHistory::pairAnew() {
    breakLink();
    mendDisks();
    const bool isOtherMac = dice_.below(2) == 1;
    if (isOtherMac) {
        beginLoss(Side::mac);
        removeMacArchive("notes-from-iphone.json");
        removeMacArchive("summaries-from-iphone.json");
    }
    require(phone_->forgetConfirmations().has_value(), "the phone cannot save");
}

void NotesHistory::removeMacArchive(const char* name) {
    std::filesystem::remove(folder_ / "Morvex" / name);
    loadMac();
}

void NotesHistory::loadMac() {
    isUnsaved_ = false;
    mac_.emplace(folder_, macClock_, dice_);
    noteChanged_ = mac_->priZmene([this](const MorvexNote& note) {
        if (isUp_) tellPhone({MacPayload::NoteUpdate{note}});
    });
    summaries_.emplace(folder_);
}

void NotesHistory::loadPhone() {
    isPhoneUnsaved_ = false;
    phone_.emplace(PhoneRecords::load(folder_, phoneClock_, dice_));
    sync_.emplace(*phone_, post_, terminal_);
}

void NotesHistory::breakDisk(Side side) {
    std::error_code missing;
    if (side == Side::mac) {
        std::filesystem::rename(folder_ / "Morvex", folder_ / "away", missing);
        std::ofstream(folder_ / "Morvex") << "in the way";
    } else {
        std::filesystem::rename(folder_ / "records.json", folder_ / "kept.json", missing);
        std::filesystem::create_directory(folder_ / "records.json");
    }
    brokenDisks_.insert(side);
}

void NotesHistory::mendDisks() {
    std::error_code missing;
    if (brokenDisks_.contains(Side::mac)) {
        std::filesystem::remove(folder_ / "Morvex");
        std::filesystem::rename(folder_ / "away", folder_ / "Morvex", missing);
    }
    if (brokenDisks_.contains(Side::phone)) {
        std::filesystem::remove(folder_ / "records.json");
        std::filesystem::rename(folder_ / "kept.json", folder_ / "records.json", missing);
    }
    brokenDisks_.clear();
}

std::string NotesHistory::title() {
    static const std::array<std::string, 5> titles{"Nákup", "nakup", "Auto", "Kůň", "KUN"};
    return titles[static_cast<std::size_t>(dice_.below(titles.size()))];
}

} // namespace morvex

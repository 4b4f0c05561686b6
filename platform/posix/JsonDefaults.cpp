#include "platform/posix/JsonDefaults.h"

#include "foundation/OneShot.h"
#include "foundation/ProgramLog.h"
#include "foundation/Text.h"
#include "platform/posix/base/AtomicFile.h"
#include "shared/base/Base64.h"
#include "shared/base/Overloaded.h"
#include "shared/base/SystemError.h"
#include "shared/base/Try.h"
#include "shared/wire/Json.h"

#include <boost/json.hpp>

#include <algorithm>
#include <cerrno>
#include <utility>
#include <variant>

namespace morvex {

namespace json = boost::json;

namespace {

constexpr std::string_view dataKey = "$data";
constexpr JsonLimits limits{.size = JsonDefaults::sizeLimit};

std::optional<DefaultsItem> itemFrom(const json::value& value) {
    if (auto* text = value.if_string()) return std::string(*text);
    auto* object = value.if_object();
    auto* encoded = object && object->size() == 1 ? object->if_contains(dataKey) : nullptr;
    if (!encoded || !encoded->is_string()) return std::nullopt;
    return base64Decode(encoded->get_string());
}

std::optional<DefaultsValue> valueFrom(const json::value& value) {
    if (auto* boolean = value.if_bool()) return *boolean;
    if (auto* array = value.if_array()) {
        std::vector<DefaultsItem> items;
        for (const auto& element : *array) {
            auto item = itemFrom(element);
            if (!item) return std::nullopt;
            items.push_back(*std::move(item));
        }
        return items;
    }
    auto item = itemFrom(value);
    if (!item) return std::nullopt;
    return std::visit([](auto& held) { return DefaultsValue(std::move(held)); }, *item);
}

json::value jsonFrom(const std::string& text) {
    return json::string(repairUtf8(text));
}

json::value jsonFrom(const Bytes& bytes) {
    return json::object{{dataKey, base64Encode(bytes)}};
}

json::value jsonFrom(const DefaultsValue& value) {
    return std::visit(
        Overloaded{[](bool boolean) { return json::value(boolean); },
                   [](const std::vector<DefaultsItem>& items) {
                       json::array array;
                       for (const auto& item : items)
                           array.push_back(std::visit([](const auto& held) { return jsonFrom(held); }, item));
                       return json::value(std::move(array));
                   },
                   [](const auto& item) { return jsonFrom(item); }},
        value);
}

Result<void> writeValues(const std::filesystem::path& path, const std::string& text) {
    if (text.size() > JsonDefaults::sizeLimit) return fail(SystemError{EFBIG});
    CHECK(checkReadable(text, limits));
    return writeAtomically(path, asBytes(text));
}

/// Only booleans are merged into a file that could not be read at the start, because all other values may
/// have been computed from settings that were not known. Retrying does not help.
struct LeftOut {
    [[nodiscard]] Sentence popis() const {
        return "Soubor s ním při startu nešel přečíst. Ukonči Morvex a spusť ho znovu."_sentence;
    }
};

/// Merges changes into a file that could not be read at the start; all other content is kept. Fails with
/// `LeftOut` when some changes must not be merged.
Result<void> bringInto(const std::filesystem::path& path, const json::object& changed,
                       const std::set<std::string>& leftOut) {
    TRY(const auto, bytes, readWhole(path, JsonDefaults::sizeLimit));
    json::object values;
    if (bytes) {
        TRY(auto, parsed, parseJson(asText(*bytes), limits));
        if (!parsed.is_object()) return fail(SystemError{EINVAL});
        values = std::move(parsed.get_object());
    }
    const auto before = values;
    bool isWhole = true;
    for (const auto& [key, value] : changed) {
        if (leftOut.contains(key))
            isWhole = false;
        else
            values.insert_or_assign(key, value);
    }
    if (values != before) CHECK(writeValues(path, json::serialize(values)));
    if (!isWhole) return fail(LeftOut{});
    return {};
}

} // namespace

JsonDefaults::JsonDefaults(const std::filesystem::path& configHome, Saving saving)
    : path_(configHome / "Morvex" / "defaults.json"),
      saving_(saving),
      saves_(saving, {[this] { return startSaving(); },
                      [this](const Result<void>& result) { finishSaving(result); }}) {
    read();
}

JsonDefaults::~JsonDefaults() {
    forgetRetry();
}

void JsonDefaults::read() {
    auto bytes = readWhole(path_, sizeLimit);
    if (!bytes && systemCode(bytes.error()) != EFBIG) {
        isKnown_ = false;
        logCause("reading the settings", bytes.error());
        loadProblem_ = "Soubor s nastavením nejde přečíst: {duvod}"_sentence(bytes.error().popis());
        return;
    }
    if (bytes && !*bytes) return;
    auto parsed = bytes ? parseJson(asText(**bytes), limits) : Result<json::value>(fail(bytes.error()));
    if (parsed && parsed->is_object())
        values_ = std::move(parsed->get_object());
    else
        setDamagedAside();
}

void JsonDefaults::setDamagedAside() {
    auto moved = setAside(path_);
    isKnown_ = moved.has_value();
    if (!moved) logCause("setting the settings aside", moved.error());
    loadProblem_ =
        moved ? "Soubor s nastavením byl poškozený; je odložený jako {soubor}"_sentence(
                    moved->filename().string())
              : "Soubor s nastavením je poškozený a nejde odložit: {duvod}"_sentence(moved.error().popis());
}

std::optional<DefaultsValue> JsonDefaults::get(const std::string& key) const {
    auto* value = values_.if_contains(key);
    return value ? valueFrom(*value) : std::nullopt;
}

void JsonDefaults::changeTogether(DefaultsValues values, const std::vector<std::string>& removed) {
    // A boolean that was changed together with other values has its meaning only together with them.
    const bool saysMore = !removed.empty() || !std::ranges::all_of(values, [](const auto& change) {
        return std::holds_alternative<bool>(change.second);
    });
    for (const auto& [key, value] : values) {
        endProposals(key);
        if (!saysMore) leftOut_.erase(key);
        if (saysMore && !isKnown_) leftOut_.insert(key);
        auto encoded = jsonFrom(value);
        const auto* present = values_.if_contains(key);
        // While the file's content is unknown, an empty array does not count as a change.
        const bool isNothingNew = !isKnown_ && encoded.is_array() && encoded.get_array().empty();
        if (present ? *present == encoded : isNothingNew) continue;
        values_.insert_or_assign(key, std::move(encoded));
        unsaved_ = true;
    }
    for (const auto& key : removed) {
        endProposals(key);
        if (values_.erase(key) > 0) unsaved_ = true;
    }
    save();
}

void JsonDefaults::endProposals(std::string_view key) {
    for (const auto& proposal : proposals_)
        if (proposal->values.contains(key)) proposal->isOver = true;
    for (const auto& proposal : proposalsUnderWay_) {
        if (!proposal->values.contains(key)) continue;
        proposal->isOver = true;
        unsaved_ = true; // the running save still writes the proposal to the disk
    }
}

Task<Result<void>> JsonDefaults::setOnceSaved(DefaultsValues values) {
    if (!isKnown_) co_return fail(TextError{loadProblem_.value_or(Sentence())});
    if (isEnding_) co_return fail(Abandoned{});
    auto proposal = std::make_shared<Proposal>();
    for (const auto& [key, value] : values) {
        endProposals(key);
        proposal->values.insert_or_assign(key, jsonFrom(value));
    }
    proposals_.push_back(proposal);
    const auto saved = co_await saves_.request(0)->wait();
    if (proposal->isOver) co_return fail(ChangedMeanwhile{});
    co_return saved;
}

const std::optional<Sentence>& JsonDefaults::unsavedProblem() const {
    return saveProblem_;
}

std::optional<Sentence> JsonDefaults::problem() const {
    return saveProblem_ ? saveProblem_ : loadProblem_;
}

void JsonDefaults::save() {
    if (unsaved_ && !isEnding_) (void)saves_.request(0);
}

SaveQueue::Save JsonDefaults::startSaving() {
    forgetRetry();
    unsaved_ = false;
    if (!isKnown_)
        return {0, [path = path_, values = values_, leftOut = leftOut_] {
                    return bringInto(path, values, leftOut);
                }};
    proposalsUnderWay_ = std::exchange(proposals_, {});
    std::erase_if(proposalsUnderWay_, [](const auto& proposal) { return proposal->isOver; });
    auto text = json::serialize(withProposals());
    const auto size = text.size();
    return {size, [path = path_, text = std::move(text)] { return writeValues(path, text); }};
}

json::object JsonDefaults::withProposals() const {
    auto values = values_;
    for (const auto& proposal : proposalsUnderWay_)
        if (!proposal->isOver)
            for (const auto& [key, value] : proposal->values) values.insert_or_assign(key, value);
    return values;
}

void JsonDefaults::finishSaving(const Result<void>& result) {
    if (result) values_ = withProposals();
    proposalsUnderWay_.clear();
    // A failed save may have reached the disk nevertheless, even with a proposal that does not count, so the
    // file has to be written again.
    if (!result) unsaved_ = true;
    if (!result && !result.error().as<LeftOut>() && !isEnding_) waitForRetry();
    auto problem = result ? std::nullopt : std::optional(notSavedBecause(result.error()));
    if (std::exchange(saveProblem_, problem) != problem) tellOfProblem();
}

void JsonDefaults::waitForRetry() {
    auto* home = &saving_.home;
    retry_ = saving_.clock.at(saving_.clock.sinceBoot() + retryDelay, [home, self = std::weak_ptr(self_)] {
        home->post([self] {
            if (const auto defaults = self.lock()) (*defaults)->save();
        });
    });
}

void JsonDefaults::forgetRetry() {
    if (retry_ != 0) saving_.clock.forget(std::exchange(retry_, 0));
}

Task<void> JsonDefaults::saved() {
    save();
    co_await saves_.settled();
}

Task<void> JsonDefaults::shutDown() {
    forgetRetry();
    save();
    isEnding_ = true;
    co_await saves_.settled();
}

} // namespace morvex

#include "app/personal/SouhrnyStore.h"

#include "app/personal/NewestFirst.h"

#include <algorithm>
#include <utility>

namespace morvex {

namespace {

std::vector<MorvexSummary> sorted(const std::vector<MorvexSummary>& summaries) {
    std::vector<MorvexSummary> sorted;
    sorted.reserve(summaries.size());
    for (const auto* summary : newestFirst(summaries, &MorvexSummary::createdAt)) sorted.push_back(*summary);
    return sorted;
}

} // namespace

SouhrnyStore SouhrnyStore::load(const std::filesystem::path& applicationSupport) {
    SouhrnyStore store(
        RecordFile<SummariesArchive>(applicationSupport / "Morvex" / "summaries-from-iphone.json"));
    store.archive_ = store.soubor_.load();
    auto& records = store.archive_.summaries.records;
    records = sorted(records);
    return store;
}

bool SouhrnyStore::prijmout(MorvexSummary summary) {
    auto changed = archive_;
    auto& records = changed.summaries.records;
    auto stored = std::ranges::find(records, summary.id, &MorvexSummary::id);
    if (stored == records.end())
        records.push_back(std::move(summary));
    else if (stored->revision >= summary.revision)
        return true;
    else
        *stored = std::move(summary);
    records = sorted(records);

    auto saved = soubor_.save(changed);
    if (saved) archive_ = std::move(changed);
    auto problem = saved ? std::nullopt : std::optional(saved.error().popis());
    const bool isNews = saved || problem != problem_;
    problem_ = std::move(problem);
    if (isNews && onChange) onChange();
    return saved.has_value();
}

} // namespace morvex

#include "app/personal/SouhrnyStore.h"

#include "app/personal/NewestFirst.h"

#include <utility>

namespace morvex {

SouhrnyStore::SouhrnyStore(const std::filesystem::path& applicationSupport, Saving saving)
    : soubor_(applicationSupport / "Morvex" / "summaries-from-iphone.json"),
      records_(soubor_.load().summaries.records),
      saves_(saving,
             {[this] { return startSaving(); }, [this](const Result<void>& saved) { finishSaving(saved); }}) {
    records_.reorder(newestFirst(records_.all(), &MorvexSummary::createdAt));
    summaries_ = copied(records_.all());
}

Task<bool> SouhrnyStore::prijmout(MorvexSummary summary) {
    const auto* stored = records_.find(summary.id);
    // The phone may forget its version once the version that replaces it is on the disk.
    if (stored && stored->revision >= summary.revision) return saves_.onDisk(records_.standing(summary.id));
    const auto growth = summary.title.size() + summary.body.size();
    records_.receive(std::move(summary));
    return SaveQueue::onDisk(saves_.request(growth));
}

SaveQueue::Save SouhrnyStore::startSaving() {
    beingSaved_ = newestFirst(records_.beginSave(), &MorvexSummary::createdAt);
    return {records_.bytes(),
            [this, records = beingSaved_] { return soubor_.save({.summaries = {copied(records)}}); }};
}

void SouhrnyStore::finishSaving(const Result<void>& saved) {
    const auto records = std::exchange(beingSaved_, {});
    if (saved) {
        records_.saved();
        // Reordered only after a successful save, so that an undone change gets its old place back too.
        records_.reorder(inOrderOf(records, records_.all()));
        summaries_ = copied(records);
    } else {
        records_.failed();
    }
    auto problem = saved ? std::nullopt : std::optional(saved.error().popis());
    const bool isNews = saved || problem != problem_;
    problem_ = std::move(problem);
    if (isNews) onChange_.tell();
}

} // namespace morvex

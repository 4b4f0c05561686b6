#pragma once

#include "app/features/Feature.h"
#include "app/personal/NotesSync.h"
#include "app/personal/NotesTools.h"
#include "app/personal/PoznamkyStore.h"
#include "app/personal/SouhrnyStore.h"

namespace morvex {

/// Notes and summaries: their stores, their synchronisation with the phone, and the tools `mac.notes.*`.
class RecordsFeature final : public Feature {
  public:
    explicit RecordsFeature(FeatureContext& context);

    [[nodiscard]] PoznamkyStore& poznamky() { return poznamky_; }

    [[nodiscard]] SouhrnyStore& souhrny() { return souhrny_; }

    Task<void> catchUp(std::shared_ptr<SecureLink> link) override;
    Task<void> settled() override;
    Task<void> saved() override;

  private:
    PoznamkyStore poznamky_;
    SouhrnyStore souhrny_;
    NotesTools tools_;
    NotesSync sync_;
};

} // namespace morvex

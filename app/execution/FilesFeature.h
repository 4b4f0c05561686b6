#pragma once

#include "app/execution/FileTools.h"
#include "app/execution/Slozky.h"
#include "app/features/Feature.h"
#include "foundation/Signal.h"

#include <memory>

namespace morvex {

/// The folders that the user allowed, for all features that work in one, and the tools `mac.files.*`.
class FilesFeature final : public Feature {
  public:
    explicit FilesFeature(FeatureContext& context);

    [[nodiscard]] Slozky& slozky() { return *slozky_; }

    void addTo(MacStatus& status) const override;
    void addTo(boost::json::object& answer) const override;

    void stop() override { slozky_->shutDown(); }

  private:
    std::unique_ptr<Slozky> slozky_;
    FileTools tools_;
    Connection foldersChanged_;
};

} // namespace morvex

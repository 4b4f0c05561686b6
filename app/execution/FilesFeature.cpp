#include "app/execution/FilesFeature.h"

#include "app/features/FeatureContext.h"
#include "shared/wire/MacStatus.h"

#include <boost/json/array.hpp>

#include <utility>

namespace morvex {

FilesFeature::FilesFeature(FeatureContext& context)
    : Feature(context),
      slozky_(Slozky::create(context.services.defaults, context.services.bookmarks,
                             context.services.folderPicker, context.services.folders)),
      tools_(*slozky_, context.services.workers, {context.clock(), WriteAllowance::usual},
             context.scope.token()),
      foldersChanged_(slozky_->priZmene([&context] { context.scope.spawn(context.poslatStav()); })) {
    tools_.addTo(context.tools, context.whileOn(Integration::files));
}

void FilesFeature::addTo(MacStatus& status) const {
    status.allowedFolders = slozky_->aliasy();
}

void FilesFeature::addTo(boost::json::object& answer) const {
    boost::json::array folders;
    for (auto& alias : slozky_->aliasy()) folders.emplace_back(std::move(alias));
    answer["folders"] = std::move(folders);
}

} // namespace morvex

#include "app/execution/FileTools.h"

#include "app/tools/Arguments.h"
#include "shared/wire/MacToolName.h"

#include <boost/json/array.hpp>

#include <algorithm>

namespace morvex {

namespace {

constexpr int mostFilesFound = 50;

/// What a new file takes on a disk, with an entry and a folder for each part of its path: a thousand files of
/// one byte fill a disk too.
std::size_t onDisk(const std::string& path, const std::string& content) {
    constexpr std::size_t block = 4096;
    const auto parts = 1 + static_cast<std::size_t>(std::ranges::count(path, '/'));
    return ((content.size() + block - 1) / block + parts) * block;
}

} // namespace

void FileTools::addTo(ToolTable& table, std::function<bool()> isOn) {
    auto isOffered = [this, isOn = std::move(isOn)] { return isOn() && !slozky_.povolene().empty(); };
    table.add(MacToolName::filesSearch, isOffered, [this](ToolCall call) { return search(std::move(call)); });
    table.add(MacToolName::filesRead, isOffered, [this](ToolCall call) { return read(std::move(call)); });
    table.add(MacToolName::filesWrite, isOffered, [this](ToolCall call) { return write(std::move(call)); });
}

Task<ToolOutcome> FileTools::search(ToolCall call) {
    Arguments arguments(call.arguments);
    auto found = co_await soubory_.hledej(arguments.text("pattern"), arguments.text("folder"), mostFilesFound,
                                          slozky_.snimek(), stop_);
    if (!found) co_return ToolOutcome::refused(found.error());
    boost::json::array files;
    for (auto& path : *found) files.emplace_back(std::move(path));
    auto count = files.size();
    co_return ToolOutcome::done({{"count", count}, {"files", std::move(files)}});
}

Task<ToolOutcome> FileTools::read(ToolCall call) {
    Arguments arguments(call.arguments);
    auto path = arguments.textOrEmpty("path");
    if (path.empty()) co_return ToolOutcome::refused("Chybí cesta.");
    auto content = co_await soubory_.precti(std::move(path), arguments.text("folder"), slozky_.snimek());
    if (!content) co_return ToolOutcome::refused(content.error());
    co_return ToolOutcome::done({{"content", *content}});
}

Task<ToolOutcome> FileTools::write(ToolCall call) {
    Arguments arguments(call.arguments);
    auto path = arguments.textOrEmpty("path");
    auto content = arguments.textOrEmpty("content");
    if (path.empty() || content.empty()) co_return ToolOutcome::refused("Chybí cesta nebo obsah.");
    const auto bytes = onDisk(path, content);
    if (!allowance_.take(bytes))
        co_return ToolOutcome::refused(SouboryChyba{SouboryChyba::PrilisMnohoZapsano{}});
    auto written = co_await soubory_.zapis(std::move(path), std::move(content), arguments.text("folder"),
                                           slozky_.snimek());
    // A write that broke off may have filled the disk all the same.
    const auto* refusal = written ? nullptr : written.error().as<SouboryChyba>();
    if (refusal && refusal->nicNezapsalo()) allowance_.giveBack(bytes);
    if (!written) co_return ToolOutcome::refused(written.error());
    co_return ToolOutcome::done({{"written", *written}});
}

} // namespace morvex

#include "app/execution/FileTools.h"

#include "shared/wire/MacToolName.h"

#include <boost/json/array.hpp>

#include <algorithm>

namespace morvex {

struct FilesSearch {
    std::optional<std::string> pattern;
    std::optional<std::string> folder;
};

void describe(auto& io, Is<FilesSearch> auto& search) {
    io.optional("pattern", search.pattern);
    io.optional("folder", search.folder);
}

struct FileToRead {
    std::string path;
    std::optional<std::string> folder;
};

void describe(auto& io, Is<FileToRead> auto& file) {
    io.required("path", file.path);
    io.optional("folder", file.folder);
}

struct FileToWrite {
    std::string path;
    std::optional<std::string> folder;
    std::string content;
};

void describe(auto& io, Is<FileToWrite> auto& file) {
    io.required("path", file.path);
    io.optional("folder", file.folder);
    io.required("content", file.content);
}

namespace {

constexpr int mostFilesFound = 50;

/// The room that a new file takes on a disk, including an entry and a folder for each part of its path,
/// because many files of one byte fill a disk too.
std::size_t onDisk(const std::string& path, const std::string& content) {
    constexpr std::size_t block = 4096;
    const auto parts = 1 + static_cast<std::size_t>(std::ranges::count(path, '/'));
    return ((content.size() + block - 1) / block + parts) * block;
}

} // namespace

void FileTools::addTo(ToolTable& table, std::function<bool()> isOn) {
    auto isOffered = [this, isOn = std::move(isOn)] { return isOn() && !slozky_.povolene().empty(); };
    table.add(MacToolName::filesSearch, isOffered, this, &FileTools::search);
    table.add(MacToolName::filesRead, isOffered, this, &FileTools::read);
    table.add(MacToolName::filesWrite, isOffered, this, &FileTools::write);
}

Task<ToolOutcome> FileTools::search(FilesSearch search, ToolCall) {
    auto found = co_await files_.hledej(std::move(search.pattern), std::move(search.folder), mostFilesFound,
                                        slozky_.snapshot(), stop_);
    if (!found) co_return ToolOutcome::refused(found.error());
    boost::json::array files;
    for (auto& path : *found) files.emplace_back(std::move(path));
    auto count = files.size();
    co_return ToolOutcome::done({{"count", count}, {"files", std::move(files)}});
}

Task<ToolOutcome> FileTools::read(FileToRead file, ToolCall) {
    if (file.path.empty()) co_return ToolOutcome::refused("Chybí cesta.");
    auto content = co_await files_.precti(std::move(file.path), std::move(file.folder), slozky_.snapshot());
    if (!content) co_return ToolOutcome::refused(content.error());
    co_return ToolOutcome::done({{"content", *content}});
}

Task<ToolOutcome> FileTools::write(FileToWrite file, ToolCall) {
    if (file.path.empty() || file.content.empty()) co_return ToolOutcome::refused("Chybí cesta nebo obsah.");
    const auto bytes = onDisk(file.path, file.content);
    if (!allowance_.take(bytes)) co_return ToolOutcome::refused(SouboryChyba{SouboryChyba::TooMuchWritten{}});
    auto written = co_await files_.zapis(std::move(file.path), std::move(file.content),
                                         std::move(file.folder), slozky_.snapshot());
    // A write that failed midway may still have used the disk space.
    const auto* refusal = written ? nullptr : written.error().as<SouboryChyba>();
    if (refusal && refusal->wroteNothing()) allowance_.giveBack(bytes);
    if (!written) co_return ToolOutcome::refused(written.error());
    co_return ToolOutcome::done({{"written", *written}});
}

} // namespace morvex

#include "tests/fault/SavedFiles.h"
#include "tests/support/ImmediateDefaults.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace morvex {

namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

/// A copy of the damaged file's content, next to it.
constexpr auto copyName = "copy";

void lay(const fs::path& file, const std::string& text) {
    fs::create_directories(file.parent_path());
    for (const auto& path : {file, file.parent_path() / copyName}) std::ofstream(path) << "{" << text;
}

std::string contentOf(const fs::path& file) {
    std::stringstream content;
    content << std::ifstream(file).rdbuf();
    return content.str();
}

/// Whether the damaged file is still in the folder unchanged, under any name.
std::string whatIsLeft(const fs::path& folder) {
    const auto copy = contentOf(folder / copyName);
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().filename() != copyName && contentOf(entry.path()) == copy) return "kept";
    return "lost";
}

/// Reported as long as the damaged file is in its place.
bool isTrouble(const std::string& text) {
    return text.starts_with("Historii úkolů se nepodařilo načíst");
}

/// The saved file named `first`, with a damaged file at `path` below the home folder.
SavedFile overDamaged(const std::string& first, const fs::path& path, const std::vector<SavedFile>& files) {
    auto file = *std::ranges::find(files, first, &SavedFile::what);
    file.what += " over a damaged file";
    file.lay = [path](const fs::path& home, const std::string& text) { lay(home / path, text); };
    file.look = [path, look = file.look](const fs::path& home) {
        auto texts = look(home);
        std::erase_if(texts, isTrouble);
        texts.push_back(whatIsLeft((home / path).parent_path()));
        return texts;
    };
    for (const auto* end : {".damaged", ".damaged-2"}) file.names.push_back(path.filename().string() + end);
    file.names.emplace_back(copyName);
    return file;
}

/// The settings set a damaged file aside when they load, which is part of the work here.
std::function<bool()> changeSettings(const fs::path& home, const std::string& text) {
    return [home, text] {
        ImmediateDefaults defaults(home);
        defaults.set("text", text);
        return defaults.text("text") == text && ImmediateDefaults(home).text("text") == text;
    };
}

/// Without the trouble, which is reported only once.
Texts lookForSettings(const fs::path& home) {
    return {ImmediateDefaults(home).text("text").value_or("none")};
}

} // namespace

std::vector<SavedFile> filesOverDamagedOnes() {
    auto files = filesOfStores();
    std::ranges::copy(filesOfPhoneAndRelay(), std::back_inserter(files));
    files.push_back({"the first settings", {}, changeSettings, lookForSettings, {"defaults.json"}});
    return {
        overDamaged("the first settings", "Morvex/defaults.json", files),
        overDamaged("the first note", "Morvex/notes-from-iphone.json", files),
        overDamaged("the first summary", "Morvex/summaries-from-iphone.json", files),
        overDamaged("the first task", "TalkSpan/agent-tasks.json", files),
        overDamaged("the first note on the phone", "records.json", files),
        overDamaged("the first task on the phone", "tasks.json", files),
    };
}

} // namespace morvex

#include "tests/fault/LaidTree.h"

#include "platform/posix/base/FileDescriptor.h"
#include "shared/base/Overloaded.h"
#include "shared/base/Require.h"

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace morvex {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view inside = "inside";

Answer answerOf(const Error& error) {
    using Chyba = SouboryChyba;
    const auto* chyba = error.as<Chyba>();
    require(chyba != nullptr, "a failure of another kind");
    return std::visit(Overloaded{[](const Chyba::MimoPovolene&) { return Answer::outside; },
                                 [](const Chyba::ZakazanaCesta&) { return Answer::forbidden; },
                                 [](const Chyba::NeniSoubor&) { return Answer::notAFile; },
                                 [](const Chyba::PrilisVelky&) { return Answer::tooLarge; },
                                 [](const Chyba::UzExistuje&) { return Answer::exists; },
                                 [](const Chyba::WouldStartProgram&) { return Answer::obeyed; },
                                 [](const Chyba::TooMuchWritten&) { return Answer::failed; },
                                 [](const Chyba::Selhalo&) { return Answer::failed; }},
                      chyba->kind);
}

/// Removes the text before `mark`, and the mark, from `text` and returns it.
std::string cut(std::string& text, std::string_view mark) {
    auto at = std::min(text.find(mark), text.size());
    auto first = text.substr(0, at);
    text.erase(0, at + mark.size());
    return first;
}

std::string described(const fs::directory_entry& entry, const FileTree& tree, const std::string& name) {
    auto status = entry.symlink_status();
    if (fs::is_symlink(status)) return "-> " + fs::read_symlink(entry.path()).string();
    if (fs::is_regular_file(status)) return tree.content(name);
    return std::to_string(static_cast<int>(status.type()));
}

} // namespace

void PrintTo(Answer answer, std::ostream* out) {
    constexpr std::string_view names[] = {"done",     "forbidden", "outside", "notAFile",
                                          "tooLarge", "exists",    "obeyed",  "failed"};
    *out << names[static_cast<std::size_t>(answer)];
}

LaidTree::LaidTree(std::string_view layout, std::vector<std::string> allowed,
                   std::optional<std::string> folder)
    : allowed_(std::move(allowed)) {
    if (folder) folder_ = rooted(*folder);
    tree_.file("outside/secret", "secret");
    tree_.file("home/.ssh/id", "secret");
    std::string rest(layout);
    while (!rest.empty()) lay(cut(rest, "; "));
    for (const auto& path : closed_) fs::permissions(path, fs::perms::none);
}

LaidTree::~LaidTree() {
    for (const auto& path : closed_) fs::permissions(path, fs::perms::owner_all);
}

std::string LaidTree::rooted(std::string_view text) const {
    std::string result;
    for (char letter : text)
        result +=
            letter == '$' ? tree_.path("").substr(0, tree_.path("").size() - 1) : std::string(1, letter);
    return result;
}

LaidTree::Read LaidTree::read(const std::string& path) {
    auto text = executor_.run(files_.precti(path, folder_, tree_.allowed(allowed_))).value();
    if (!text) return {answerOf(text.error()), {}};
    return {Answer::done, *text};
}

Answer LaidTree::write(const std::string& path, const std::string& content) {
    auto written = executor_.run(files_.zapis(path, content, folder_, tree_.allowed(allowed_))).value();
    return written ? Answer::done : answerOf(written.error());
}

std::optional<std::vector<std::string>> LaidTree::search(const std::string& query) {
    auto found = executor_.run(files_.hledej(query, folder_, 50, tree_.allowed(allowed_), {})).value();
    if (!found) return std::nullopt;
    std::ranges::sort(*found);
    return *std::move(found);
}

std::map<std::string, std::string> LaidTree::snapshot() const {
    std::map<std::string, std::string> all;
    auto root = tree_.path("");
    for (const auto& entry :
         fs::recursive_directory_iterator(root, fs::directory_options::skip_permission_denied)) {
        auto name = entry.path().string().substr(root.size());
        all[name] = described(entry, tree_, name);
    }
    return all;
}

void LaidTree::lay(const std::string& entry) {
    auto rest = entry;
    auto name = placeOf(cut(rest, " "));
    auto sign = cut(rest, " ");
    if (sign == "->")
        tree_.link(name, rooted(rest));
    else if (sign == "=")
        layLink(name, placeOf(rest));
    else if (sign == "|")
        require(::mkfifo(tree_.path(name).c_str(), 0600) == 0, "no pipe");
    else if (sign == "*")
        socket(name);
    else if (sign == "!")
        closed_.push_back(tree_.path(name));
    else if (sign.starts_with('#'))
        tree_.file(name, std::string(inside) + std::string(std::stoul(sign.substr(1)) - inside.size(), '.'));
    else if (name.ends_with('/'))
        tree_.folder(name);
    else
        tree_.file(name,
                   name.starts_with("home/Projects/") || !name.starts_with("home/") ? inside : "secret");
}

void LaidTree::layLink(const std::string& name, const std::string& target) const {
    fs::create_hard_link(tree_.path(target), tree_.path(name));
}

std::string LaidTree::placeOf(std::string_view name) const {
    return name.starts_with('/') ? std::string(name.substr(1)) : "home/Projects/" + std::string(name);
}

void LaidTree::socket(const std::string& name) const {
    FileDescriptor opened(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    auto path = tree_.path(name);
    require(path.size() < sizeof address.sun_path, "too long a name for a socket");
    std::ranges::copy(path, address.sun_path);
    require(::bind(opened.get(), reinterpret_cast<sockaddr*>(&address), sizeof address) == 0, "no socket");
}

} // namespace morvex

#include "app/execution/BeneathFolder.h"
#include "app/execution/OverenaCesta.h"
#include "app/execution/SouboryChyba.h"
#include "foundation/Paths.h"
#include "platform/memory/FixedFolders.h"
#include "shared/base/Bytes.h"
#include "shared/base/Require.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

using namespace morvex;

namespace fs = std::filesystem;

/// A tree full of ways out, with a secret behind each.
class Tree {
  public:
    Tree() {
        auto pattern = (fs::temp_directory_path() / "morvex-fuzz-XXXXXX").string();
        vyzaduj(::mkdtemp(pattern.data()) != nullptr, "no temporary folder");
        root_ = fs::canonical(pattern);
        standard_.homeFolder = path("home");
        file("home/Projects/a/file", "inside");
        file("home/Projects/.ssh/key", "secret");
        file("home/ProjectsOld/a", "secret");
        file("outside/a/file", "secret");
        link("home/Projects/b", "a");
        link("home/Projects/o", path("outside"));
        link("home/Projects/u", "../../outside");
        link("home/Projects/d", path("outside/later"));
        link("home/Projects/m", "missing/../o/a");
        link("home/Projects/k", ".ssh");
        link("home/Projects/l", "l");
        link("home/Projects/r", "/proc/self/root");
        link("outside/back", path("home/Projects"));
    }

    ~Tree() {
        std::error_code ignored;
        fs::remove_all(root_, ignored);
    }

    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;

    [[nodiscard]] std::string path(const char* name) const { return (root_ / name).string(); }

    [[nodiscard]] PovoleneSlozky allowed() const { return {{path("home/Projects")}, standard_}; }

  private:
    void file(const char* name, const char* content) const {
        fs::create_directories((root_ / name).parent_path());
        std::ofstream(root_ / name) << content;
    }

    void link(const char* name, const std::string& target) const { fs::create_symlink(target, root_ / name); }

    fs::path root_;
    FixedFolders standard_;
};

void checkPath(const OverenaCesta& checked, const Tree& tree) {
    auto allowed = tree.path("home/Projects");
    vyzaduj(checked.slozka == allowed, "another folder than the allowed one");
    vyzaduj(checked.cesta == allowed || checked.cesta.starts_with(allowed + "/"), "a path outside");
    vyzaduj(!checked.cesta.contains("/.ssh") && !checked.cesta.contains('\0'), "a forbidden path");
    vyzaduj(paths::resolved(checked.cesta) == checked.cesta, "a link was left");
    if (char* real = ::realpath(checked.cesta.c_str(), nullptr)) {
        vyzaduj(checked.cesta == real, "the system resolves it otherwise");
        std::free(real);
    }
    auto folder = BeneathFolder::open(checked.slozka);
    auto file = folder ? folder->openFile(checked.odSlozky()) : std::unexpected(folder.error());
    if (file) vyzaduj(asText(*readUpTo(file->get(), 100)) == "inside", "a secret was read");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Tree tree;
    static const auto slozky = tree.allowed();
    auto text = asText({data, size});
    // Text in front of the first line break names the folder; @ stands for the tree's own place.
    auto lineEnd = std::min(text.find('\n'), text.size());
    std::string slozka(text.substr(0, lineEnd));
    std::string path(text.substr(std::min(lineEnd + 1, text.size())));
    if (path.starts_with('@')) path.replace(0, 1, tree.path(""));

    if (auto checked = overCestu(path, slozka, slozky))
        checkPath(*checked, tree);
    else
        vyzaduj(checked.error().as<SouboryChyba>() != nullptr, "a failure without a sentence");
    return 0;
}

#include "shared/base/SystemTrouble.h"

#include "platform/posix/base/AtomicFile.h"
#include "platform/posix/base/FileDescriptor.h"
#include "shared/base/SystemError.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <fstream>
#include <set>
#include <sys/fsuid.h>
#include <unistd.h>

namespace morvex {
namespace {

using namespace std::string_literals;

TEST(SystemTrouble, TellsEachErrorOfTheSystemInItsOwnWords) {
    const std::pair<int, const char*> rows[] = {
        {ENOENT, "Soubor nebo složka neexistuje."},
        {ENOTDIR, "Část cesty není složka."},
        {EISDIR, "Na této cestě je složka."},
        {EEXIST, "Jméno už je obsazené."},
        {EACCES, "Chybí k tomu oprávnění."},
        {EPERM, "Chybí k tomu oprávnění."},
        {EROFS, "Disk je jen pro čtení."},
        {ENOSPC, "Na disku není místo."},
        {EDQUOT, "Vyhrazené místo na disku je vyčerpané."},
        {EFBIG, "Soubor je příliš velký."},
        {ELOOP, "Cesta vede přes odkaz, který nejde sledovat."},
        {ENAMETOOLONG, "Jméno nebo cesta je příliš dlouhá."},
        {EINVAL, "Takovou cestu nejde použít."},
        {EILSEQ, "Takovou cestu nejde použít."},
        {EXDEV, "Cesta vede mimo svou složku nebo na jiný disk."},
        {EBUSY, "Právě to používá jiný program."},
        {ETXTBSY, "Právě to používá jiný program."},
        {EMFILE, "Počítači došla paměť nebo už nemůže mít víc otevřených souborů a procesů."},
        {ENOMEM, "Počítači došla paměť nebo už nemůže mít víc otevřených souborů a procesů."},
        {EAGAIN, "Počítači došla paměť nebo už nemůže mít víc otevřených souborů a procesů."},
        {EIO, "Disk nebo jiné zařízení selhalo."},
        {ENOTSUP, "Tento systém nebo disk to neumí."},
        {ENOEXEC, "Soubor není program pro tento počítač."},
        {E2BIG, "Zadání je pro program příliš dlouhé."},
        {ECONNREFUSED, "Server spojení odmítl. Nejspíš neběží, nebo má jiný port, než je v adrese."},
        {ENETUNREACH, "K serveru nevede cesta. Zkontroluj připojení k síti."},
        {EHOSTUNREACH, "K serveru nevede cesta. Zkontroluj připojení k síti."},
        {ETIMEDOUT, "Server se neozval včas."},
        {ECONNRESET, "Spojení se přerušilo."},
        {EPIPE, "Spojení se přerušilo."},
        {0, "Systém ohlásil chybu, kterou neznám."},
        {99'999, "Systém ohlásil chybu, kterou neznám."},
    };
    for (const auto& [code, words] : rows) {
        EXPECT_EQ(popis(troubleOf(code)), words) << code;
        EXPECT_EQ(SystemError{code}.popis().czech(), words) << code;
    }
}

TEST(SystemTrouble, HasOneSentenceForEachKind) {
    std::set<std::string> told;
    for (int number = 0; number <= static_cast<int>(SystemTrouble::other); ++number) {
        const auto words = popis(static_cast<SystemTrouble>(number)).czech();
        EXPECT_TRUE(words.ends_with('.')) << words;
        EXPECT_TRUE(told.insert(words).second) << words;
    }
}

/// For root, who may write anywhere, this thread is nobody meanwhile.
struct AsNobody {
    AsNobody() { ::setfsuid(65534); }

    ~AsNobody() { ::setfsuid(::geteuid()); }
};

std::string failureOf(const Result<void>& result) {
    return result ? "no failure" : result.error().popis().czech();
}

TEST(SystemTrouble, IsWhatRealFilesFailWith) {
    TemporaryFolder folder;
    const auto at = [&](const std::string& name) { return folder.path() / name; };
    const auto save = [&](const std::string& name) {
        return failureOf(writeAtomically(at(name), asBytes("x"s)));
    };
    std::ofstream(at("file")) << "x";
    std::filesystem::create_directory(at("folder"));
    std::filesystem::create_symlink("circle", at("circle"));
    EXPECT_EQ(save("file/a"), "Část cesty není složka.");
    EXPECT_EQ(save("folder"), "Na této cestě je složka.");
    EXPECT_EQ(save("circle/a"), "Cesta vede přes odkaz, který nejde sledovat.");
    EXPECT_EQ(save(std::string(300, 'x')), "Jméno nebo cesta je příliš dlouhá.");
    const FileDescriptor full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
    EXPECT_EQ(failureOf(writeAll(full.get(), asBytes("x"s))), "Na disku není místo.");
}

TEST(SystemTrouble, IsAFolderThatNobodyMayWriteInto) {
    TemporaryFolder folder;
    const auto closed = folder.path() / "closed";
    std::filesystem::create_directory(closed);
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    std::filesystem::permissions(closed, std::filesystem::perms(0555));
    const AsNobody nobody;
    EXPECT_EQ(failureOf(writeAtomically(closed / "a", asBytes("x"s))), "Chybí k tomu oprávnění.");
    EXPECT_EQ(failureOf(makePrivateFolders(closed / "b")), "Chybí k tomu oprávnění.");
}

} // namespace
} // namespace morvex

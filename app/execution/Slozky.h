#pragma once

#include "app/execution/PovoleneSlozky.h"
#include "app/execution/SirokaSlozka.h"
#include "foundation/OneShot.h"
#include "foundation/Signal.h"
#include "foundation/Task.h"
#include "foundation/Turns.h"
#include "platform/ports/FolderBookmarks.h"
#include "platform/ports/FolderPicker.h"
#include "platform/ports/UserDefaults.h"
#include "shared/base/Sentence.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace morvex {

/// The folders that the user allowed, the one source of truth for what may be touched. Only the person at the
/// computer extends it, in a panel. Lives on the main thread, where every call is made; work elsewhere gets a
/// `snimek`. Its ports outlive it. Paths are absolute, standardized, and name folders.
class Slozky {
  public:
    /// Loads the folders that were allowed before; those that are no longer there are forgotten.
    static std::unique_ptr<Slozky> create(UserDefaults& defaults, FolderBookmarks& bookmarks,
                                          FolderPicker& picker, const StandardFolders& standardFolders);

    /// Ends all access that is held.
    ~Slozky();
    Slozky(const Slozky&) = delete;
    Slozky& operator=(const Slozky&) = delete;

    [[nodiscard]] const std::vector<std::string>& povolene() const;

    /// Folders of the list without a working bookmark: still allowed, to be chosen anew.
    [[nodiscard]] const std::set<std::string>& vyzadujiObnoveni() const;

    /// Why a permission could not be kept the last time; for the settings.
    [[nodiscard]] const std::optional<Sentence>& chybaOpravneni() const;

    [[nodiscard]] PovoleneSlozky snimek() const;

    /// As of `snimek()`. Looked up once for each list, since which folder is the desktop stands on the disk.
    [[nodiscard]] std::vector<std::string> aliasy() const;
    /// As of `snimek()`.
    [[nodiscard]] std::optional<std::string> slozkaProAlias(const std::optional<std::string>& alias) const;
    [[nodiscard]] bool obsahuje(std::string_view cesta) const;
    /// Whether this very folder is one of the list; without a look at the disk.
    [[nodiscard]] bool jePovolena(const std::string& slozka) const;

    /// Lets the user choose folders in the panel and allows them, once that is saved. Of those that reach as
    /// far as the home folder each is asked about first; after one no nothing of the choice is allowed. The
    /// task ends before this object goes.
    Task<void> pridat();

    /// The open question of `pridat`, until `odpovedet`.
    [[nodiscard]] const std::optional<SirokaSlozka>& otazka() const;

    enum class Odpoved { ano, ne };

    /// The person's answer. Nothing when no question is open.
    void odpovedet(Odpoved odpoved);

    /// Called when a question opens and when it closes.
    [[nodiscard]] Connection priOtazce(std::function<void()> zavolat);

    /// For the end of the program: whatever is or would be asked is answered with no.
    void ukoncit();

    /// Counts at once; saving goes on behind it until it succeeds.
    void odebrat(std::string slozka);

    /// Called after every save and when `chybaOpravneni` is cleared.
    [[nodiscard]] Connection priZmene(std::function<void()> zavolat);

  private:
    Slozky(UserDefaults& defaults, FolderBookmarks& bookmarks, FolderPicker& picker,
           const StandardFolders& standardFolders);

    void nacistZalozky();
    void nacistCesty();
    /// Chosen folders with their bookmarks.
    using Nove = std::vector<std::pair<std::string, Bytes>>;
    Nove noveZalozky(std::vector<std::string> chosen);
    /// Whether the person wants all of them, whatever they reach.
    Task<bool> jsouChtene(std::vector<std::string> chosen);
    Task<bool> zeptatSe(SirokaSlozka slozka);
    Task<Result<void>> ulozitNove(const Nove& nove);
    void nepodariloSe(const std::string& slozka, const Error& proc);
    void povolit(const std::string& slozka, const Bytes& zalozka);
    static DefaultsValues hodnoty(const std::vector<std::string>& povolene,
                                  const std::map<std::string, Bytes>& zalozky);
    void zacitPristup(const std::string& slozka);
    void ukoncitPristup(const std::string& slozka);
    void ulozit();
    void vyzadujHlavniVlakno() const;

    UserDefaults& defaults_;
    FolderBookmarks& bookmarks_;
    FolderPicker& picker_;
    const StandardFolders& standardFolders_;
    std::thread::id hlavniVlakno_ = std::this_thread::get_id();

    std::vector<std::string> povolene_;
    std::set<std::string> vyzadujiObnoveni_;
    std::optional<Sentence> chybaOpravneni_;
    std::map<std::string, Bytes> zalozky_;
    std::set<std::string> aktivniPristupy_;
    Turns ukladani_; ///< of folders that are not allowed yet
    Signal<> priZmene_;
    Turns otazky_;
    mutable std::optional<std::vector<std::string>> aliasy_; ///< of `povolene_`, once they were asked for
    std::optional<SirokaSlozka> otazka_;
    std::shared_ptr<OneShot<Odpoved>> pokracovani_; ///< of whoever asks `otazka_`
    bool konci_ = false;
    Signal<> priOtazce_;
};

} // namespace morvex

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

/// The folders that the user allowed; everything that may be accessed follows from this list. Only the person
/// at the computer can extend it, in a panel. All calls are made on the main thread; work elsewhere gets a
/// `snimek`. Its ports outlive it. Paths are absolute, standardized, and name folders.
class Slozky {
  public:
    /// Loads the folders that were allowed before; those that no longer exist are dropped.
    static std::unique_ptr<Slozky> create(UserDefaults& defaults, FolderBookmarks& bookmarks,
                                          FolderPicker& picker, const StandardFolders& standardFolders);

    /// Ends access to all folders.
    ~Slozky();
    Slozky(const Slozky&) = delete;
    Slozky& operator=(const Slozky&) = delete;

    [[nodiscard]] const std::vector<std::string>& povolene() const;

    /// Listed folders without a working bookmark: still allowed, but the user should choose them again.
    [[nodiscard]] const std::set<std::string>& vyzadujiObnoveni() const;

    /// Why a permission could not be saved the last time; for the settings.
    [[nodiscard]] const std::optional<Sentence>& chybaOpravneni() const;

    [[nodiscard]] PovoleneSlozky snimek() const;

    /// The same as in `snimek()`. Computed once for each list, because finding the desktop folder reads the
    /// disk.
    [[nodiscard]] std::vector<std::string> aliasy() const;
    /// The same as in `snimek()`.
    [[nodiscard]] std::optional<std::string> slozkaProAlias(const std::optional<std::string>& alias) const;
    [[nodiscard]] bool obsahuje(std::string_view cesta) const;
    /// Whether the list contains exactly this folder. Does not read the disk.
    [[nodiscard]] bool jePovolena(const std::string& slozka) const;

    /// Lets the user choose folders in the panel and allows them once that is saved. The user is asked about
    /// each one that reaches as far as the home folder; after one no, none of the chosen folders is allowed.
    /// The task ends before this object is destroyed.
    Task<void> pridat();

    /// The open question of `pridat`, until `odpovedet`.
    [[nodiscard]] const std::optional<SirokaSlozka>& otazka() const;

    enum class Odpoved { ano, ne };

    /// Takes the user's answer. Does nothing if no question is open.
    void odpovedet(Odpoved odpoved);

    /// Called when a question opens and when it closes.
    [[nodiscard]] Connection priOtazce(std::function<void()> zavolat);

    /// For the end of the program: the open question and all later ones are answered with no.
    void ukoncit();

    /// Takes effect at once; saving continues in the background until it succeeds.
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
    /// Whether the user confirms all chosen folders that reach far.
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
    Turns ukladani_; ///< saves of folders that are not allowed yet
    Signal<> priZmene_;
    Turns otazky_;
    mutable std::optional<std::vector<std::string>> aliasy_; ///< names of `povolene_`, computed on demand
    std::optional<SirokaSlozka> otazka_;
    std::shared_ptr<OneShot<Odpoved>> pokracovani_; ///< waits for the answer to `otazka_`
    bool konci_ = false;
    Signal<> priOtazce_;
};

} // namespace morvex

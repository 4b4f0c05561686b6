#pragma once

#include "app/execution/AllowedFolders.h"
#include "app/execution/WideFolder.h"
#include "foundation/OneShot.h"
#include "foundation/Signal.h"
#include "foundation/Task.h"
#include "foundation/Turns.h"
#include "platform/ports/FolderBookmarks.h"
#include "platform/ports/FolderPicker.h"
#include "platform/ports/RightsChanges.h"
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
/// `snapshot`. Its ports outlive it. Paths are absolute, standardized, and name folders.
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

    [[nodiscard]] AllowedFolders snapshot() const;

    /// The same as in `snapshot()`. Computed once for each list, because finding the desktop folder reads the
    /// disk.
    [[nodiscard]] std::vector<std::string> aliasy() const;
    /// The same as in `snapshot()`.
    [[nodiscard]] std::optional<std::string> slozkaProAlias(const std::optional<std::string>& alias) const;
    [[nodiscard]] bool obsahuje(std::string_view cesta) const;
    /// Whether the list contains exactly this folder. Does not read the disk.
    [[nodiscard]] bool isAllowed(const std::string& slozka) const;

    /// Lets the user choose folders in the panel and allows them once that is saved. The user is asked about
    /// each one that reaches as far as the home folder; after one no, none of the chosen folders is allowed.
    /// The task ends before this object is destroyed.
    Task<void> pridat();

    /// The open question of `pridat`, until `answerQuestion`.
    [[nodiscard]] const std::optional<WideFolder>& question() const;

    enum class Odpoved { yes, no };

    /// Takes the user's answer. Does nothing if no question is open.
    void answerQuestion(Odpoved odpoved);

    /// Called when a question opens and when it closes.
    [[nodiscard]] Connection onQuestion(std::function<void()> callback);

    /// For the end of the program: the open question and all later ones are answered with no.
    void shutDown();

    /// Takes effect at once; saving continues in the background until it succeeds.
    void odebrat(std::string slozka);

    /// Called after every save and when `chybaOpravneni` is cleared.
    [[nodiscard]] Connection priZmene(std::function<void()> callback);

  private:
    Slozky(UserDefaults& defaults, FolderBookmarks& bookmarks, FolderPicker& picker,
           const StandardFolders& standardFolders);

    void loadBookmarks();
    void loadPaths();
    /// Chosen folders with their bookmarks.
    using NewBookmarks = std::vector<std::pair<std::string, Bytes>>;
    NewBookmarks makeBookmarks(std::vector<std::string> chosen);
    /// Whether the user confirms all chosen folders that reach far.
    Task<bool> areWanted(std::vector<std::string> chosen);
    Task<bool> ask(WideFolder slozka);
    Task<Result<void>> saveNewBookmarks(const NewBookmarks& newBookmarks);
    void reportFailure(const std::string& slozka, const Error& proc);
    void allow(const std::string& slozka, const Bytes& zalozka);
    static DefaultsValues defaultsValues(const std::vector<std::string>& povolene,
                                         const std::map<std::string, Bytes>& zalozky);
    void beginAccess(const std::string& slozka);
    void endAccess(const std::string& slozka);
    void ulozit();
    void requireMainThread() const;

    UserDefaults& defaults_;
    RightsChanges changes_; ///< folders that are not allowed yet
    FolderBookmarks& bookmarks_;
    FolderPicker& picker_;
    const StandardFolders& standardFolders_;
    std::thread::id mainThread_ = std::this_thread::get_id();

    std::vector<std::string> povolene_;
    std::set<std::string> vyzadujiObnoveni_;
    std::optional<Sentence> chybaOpravneni_;
    std::map<std::string, Bytes> zalozky_;
    std::set<std::string> aktivniPristupy_;
    Signal<> priZmene_;
    Turns questionTurns_;
    mutable std::optional<std::vector<std::string>> aliasy_; ///< names of `povolene_`, computed on demand
    std::optional<WideFolder> question_;
    std::shared_ptr<OneShot<Odpoved>> pokracovani_; ///< waits for the answer to `question_`
    bool isEnding_ = false;
    Signal<> onQuestion_;
};

} // namespace morvex

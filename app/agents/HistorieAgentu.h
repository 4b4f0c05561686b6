#pragma once

#include "app/agents/UkolAgenta.h"
#include "foundation/ArchiveFile.h"
#include "foundation/Random.h"
#include "foundation/SaveQueue.h"
#include "foundation/Signal.h"
#include "platform/ports/UrlOpener.h"
#include "shared/base/Sentence.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace morvex {

/// The tasks of the coding agents, newest first, in "TalkSpan/agent-tasks.json": what ran, what the phone has
/// not acknowledged yet, and by which session a later instruction goes on. Every change raises the revision
/// of its task and is saved on the storage thread; a failed save is told in `potiz` and stops nothing. An
/// operation on an unknown work item changes nothing, and what is no name of a session counts as none. Lives
/// on the main thread.
class HistorieAgentu {
  public:
    static constexpr std::size_t maximum = 50; ///< tasks
    /// Bytes that are kept of each text (and 4096 of the folder's path and the agent's name), so that a task
    /// always fits into a frame to the phone.
    static constexpr std::size_t longestText = 100'000;

    struct Services {
        Saving saving;
        Random& random;
        UrlOpener& opener;
    };

    /// A task to begin.
    struct Zadani {
        std::optional<Uuid> workItemID; ///< a task that is to go on; absent for a new one
        std::optional<Uuid> conversationID;
        std::string nastroj;
        std::optional<std::string> nazev; ///< blank is absent
        std::string instrukce;
        std::string slozka; ///< absolute path
    };

    /// Loads the file. Tasks that still ran when the program ended come back as interrupted.
    static std::unique_ptr<HistorieAgentu> create(const std::filesystem::path& applicationSupport,
                                                  Services services);

    [[nodiscard]] const std::vector<UkolAgenta>& polozky() const;

    /// What went wrong last, for the user.
    [[nodiscard]] const std::optional<Sentence>& potiz() const;

    /// The task that runs, or null; also one that the list has forgotten since it began. Not to be kept.
    [[nodiscard]] const UkolAgenta* bezici() const;

    /// Called after every change of the list or of `potiz`.
    [[nodiscard]] Connection priZmene(std::function<void()> zavolat);

    /// Begins a task: the one with this work item and the same tool goes on under its id and session, else
    /// there is a new one. Its folder is the given one. It comes to the front, and the oldest ones beyond
    /// `maximum` go.
    UkolAgenta zaloz(Zadani zadani);

    void nastavRelaci(const Uuid& workItemID, std::string relace);
    void dokonci(const Uuid& workItemID, std::string shrnuti, std::optional<std::string> relace);
    void selhal(const Uuid& workItemID, Sentence chyba);
    void preruseno(const Uuid& workItemID);

    [[nodiscard]] std::optional<UkolAgenta> ukol(const Uuid& workItemID) const;
    [[nodiscard]] std::optional<UkolAgenta> ukolProRelaci(const std::string& nastroj,
                                                          const std::string& relace) const;

    /// Tasks with a revision that the phone has not acknowledged, in the order of the list.
    [[nodiscard]] std::vector<UkolAgenta> nedorucene() const;

    /// The phone has this revision. Neither runs ahead of a task nor takes a delivery back. Where two tools
    /// worked on one work item, it is meant for the task that waits for exactly this acknowledgement.
    void potvrd(const Uuid& workItemID, std::uint64_t revize);

    /// The session of this work item, or the latest one of the tool in a folder. Nothing for an empty one.
    [[nodiscard]] std::optional<std::string> relaceProUkol(const Uuid& workItemID,
                                                           const std::string& nastroj) const;
    [[nodiscard]] std::optional<std::string> relaceProSlozku(const std::string& nastroj,
                                                             const std::string& slozka) const;

    /// Which task is meant: the one of `workItemID`, otherwise the first with this tool, by any of its names,
    /// and in a folder of this name; each only when given. A task in the folder at `cesta` goes before those
    /// that only share its name.
    struct Hledany {
        std::optional<Uuid> workItemID;
        std::optional<std::string> nastroj;
        std::optional<std::string> slozka;
        std::optional<std::string> cesta = {};
    };

    /// Takes over a session id, trimmed. Nothing happens for a blank one.
    std::optional<UkolAgenta> prijmiPokracovani(const Hledany& hledany, const std::string& relace);
    /// Gives a task another name, trimmed. Nothing happens for a blank one.
    std::optional<UkolAgenta> prejmenuj(const Hledany& hledany, const std::string& nazev);

    /// Opens the task's session in its agent's application. False when that cannot be: `potiz` tells why.
    bool otevritRelaci(const UkolAgenta& ukol);

    /// Forgets all tasks. The phone is not told. A task that runs goes from the list and the file, yet it is
    /// known by its id until this program ends, so that the phone hears of its end.
    void vymazat();

    /// Resumes when what was changed until now has been saved, or could not be. What is told to the phone
    /// waits for it, and so does the end of the program.
    Task<void> ulozeno() { return saves_.settled(); }

  private:
    HistorieAgentu(const std::filesystem::path& applicationSupport, Services services);

    void nacti();
    void prerusBezici();
    void ulozit();
    SaveQueue::Save zacniUkladat();
    void skonciUkladani(const Result<void>& saved);
    void setPotiz(std::optional<Sentence> potiz);
    void zvysRevizi(UkolAgenta& ukol) const;
    [[nodiscard]] UkolAgenta* najdi(const Uuid& workItemID);
    [[nodiscard]] UkolAgenta* potvrzovany(const Uuid& workItemID, std::uint64_t revize);
    [[nodiscard]] UkolAgenta* najdi(const Hledany& hledany);
    [[nodiscard]] std::optional<UkolAgenta> vyjmi(const Uuid& workItemID, const std::string& nastroj);
    [[nodiscard]] UkolAgenta novy(const Zadani& zadani);
    /// Applies `zmena`, raises the revision and saves.
    template <class Zmena> void zmen(const Uuid& workItemID, Zmena zmena);
    void vyzadujHlavniVlakno() const;

    Services services_;
    ArchiveFile soubor_;
    std::thread::id hlavniVlakno_ = std::this_thread::get_id();
    std::vector<UkolAgenta> polozky_;
    std::optional<UkolAgenta> zapomenuty_; ///< ran when the list was cleared
    std::optional<Sentence> potiz_;
    Signal<> priZmene_;
    SaveQueue saves_;
};

} // namespace morvex

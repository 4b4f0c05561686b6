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
/// not acknowledged yet, and which session a later instruction continues. Every change raises the revision of
/// its task and is saved on the storage thread; a failed save is reported in `potiz` and stops nothing. An
/// operation on an unknown work item changes nothing, and an unusable session id counts as none. Main thread.
class HistorieAgentu {
  public:
    static constexpr std::size_t maximum = 50; ///< tasks
    /// Bytes kept of each text (4096 of the folder's path and the agent's name), so that a task always fits
    /// into a frame to the phone.
    static constexpr std::size_t longestText = 100'000;

    struct Services {
        Saving saving;
        Random& random;
        UrlOpener& opener;
    };

    /// A task that is to begin.
    struct Assignment {
        std::optional<Uuid> workItemID; ///< the task to continue; absent for a new one
        std::optional<Uuid> conversationID;
        std::string nastroj;
        std::optional<std::string> nazev; ///< a blank title counts as absent
        std::string instrukce;
        std::string slozka; ///< absolute path
    };

    /// Loads the file. Tasks that were running when the program ended are marked as interrupted.
    static std::unique_ptr<HistorieAgentu> create(const std::filesystem::path& applicationSupport,
                                                  Services services);

    [[nodiscard]] const std::vector<UkolAgenta>& polozky() const;

    /// The last problem, for the user.
    [[nodiscard]] const std::optional<Sentence>& potiz() const;

    /// The running task, or null; this may be a task that the list has forgotten since it began. The pointer
    /// must not be kept.
    [[nodiscard]] const UkolAgenta* bezici() const;

    /// Called after every change of the list or of `potiz`.
    [[nodiscard]] Connection priZmene(std::function<void()> callback);

    /// Begins a task. A task with this work item and the same tool is continued under its id and session;
    /// otherwise a new one is made. The given folder applies. The task moves to the front, and the oldest
    /// tasks beyond `maximum` are dropped.
    UkolAgenta zaloz(Assignment assignment);

    void nastavRelaci(const Uuid& workItemID, std::string relace);
    void dokonci(const Uuid& workItemID, std::string shrnuti, std::optional<std::string> relace);
    void selhal(const Uuid& workItemID, Sentence chyba);
    void preruseno(const Uuid& workItemID);

    [[nodiscard]] std::optional<UkolAgenta> ukol(const Uuid& workItemID) const;
    [[nodiscard]] std::optional<UkolAgenta> ukolProRelaci(const std::string& nastroj,
                                                          const std::string& relace) const;

    /// Tasks with a revision that the phone has not acknowledged, in the order of the list.
    [[nodiscard]] std::vector<UkolAgenta> nedorucene() const;

    /// The phone has acknowledged this revision. A revision higher than the task's counts as the task's; one
    /// that is not higher than the delivered one changes nothing. If two tools worked on one work item, the
    /// acknowledgement is for the task that waits for exactly this revision.
    void potvrd(const Uuid& workItemID, std::uint64_t revize);

    /// The session of this work item, or the tool's latest one in a folder. Empty if there is none.
    [[nodiscard]] std::optional<std::string> relaceProUkol(const Uuid& workItemID,
                                                           const std::string& nastroj) const;
    [[nodiscard]] std::optional<std::string> relaceProSlozku(const std::string& nastroj,
                                                             const std::string& slozka) const;

    /// Describes the wanted task: the one of `workItemID`, otherwise the first with this tool (by any of its
    /// names) and in a folder of this name; criteria that are not given are ignored. A task in the folder at
    /// `cesta` is preferred to tasks whose folder only has the same name.
    struct SoughtTask {
        std::optional<Uuid> workItemID;
        std::optional<std::string> nastroj;
        std::optional<std::string> slozka;
        std::optional<std::string> cesta = {};
    };

    /// Sets a task's session id, trimmed. Does nothing for a blank one.
    std::optional<UkolAgenta> prijmiPokracovani(const SoughtTask& sought, const std::string& relace);
    /// Renames a task; the name is trimmed. Does nothing for a blank one.
    std::optional<UkolAgenta> renameTask(const SoughtTask& sought, const std::string& nazev);

    /// Opens the task's session in its agent's application. If that fails, returns false and `potiz` says
    /// why.
    bool otevritRelaci(const UkolAgenta& ukol);

    /// Forgets all tasks without telling the phone. A running task disappears from the list and the file, but
    /// stays known by its id until this program ends, so that the phone learns of its end.
    void vymazat();

    /// Resumes when all changes so far have been saved or could not be saved. Awaited before the phone is
    /// told of a task and before the program ends.
    Task<void> saved() { return saves_.settled(); }

  private:
    HistorieAgentu(const std::filesystem::path& applicationSupport, Services services);

    void load();
    void interruptRunning();
    void ulozit();
    SaveQueue::Save startSaving();
    void finishSaving(const Result<void>& saved);
    void setPotiz(std::optional<Sentence> potiz);
    void raiseRevision(UkolAgenta& ukol) const;
    [[nodiscard]] UkolAgenta* lookUp(const Uuid& workItemID);
    [[nodiscard]] UkolAgenta* acknowledgedTask(const Uuid& workItemID, std::uint64_t revize);
    [[nodiscard]] UkolAgenta* lookUp(const SoughtTask& sought);
    [[nodiscard]] std::optional<UkolAgenta> takeOut(const Uuid& workItemID, const std::string& nastroj);
    [[nodiscard]] UkolAgenta newTask(const Assignment& assignment);
    /// Applies `change`, raises the revision and saves.
    template <class Change> void applyChange(const Uuid& workItemID, Change change);
    void requireMainThread() const;

    Services services_;
    ArchiveFile soubor_;
    std::thread::id mainThread_ = std::this_thread::get_id();
    std::vector<UkolAgenta> polozky_;
    std::optional<UkolAgenta> forgotten_; ///< it was running when the list was cleared
    std::optional<Sentence> potiz_;
    Signal<> priZmene_;
    SaveQueue saves_;
};

} // namespace morvex

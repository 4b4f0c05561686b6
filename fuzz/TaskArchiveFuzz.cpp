// The file of the agents' tasks, read by the history: running tasks become interrupted, the rest stays as
// written, and a change is there at the next start. Every task can be sent to the phone.

#include "app/agents/HistorieAgentu.h"
#include "fuzz/SortNewestFirst.h"
#include "fuzz/StoreFile.h"
#include "platform/memory/ImmediateExecutor.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ScriptedRandom.h"
#include "platform/memory/ScriptedUrlOpener.h"
#include "shared/wire/Json.h"

#include <algorithm>
#include <limits>

using namespace morvex;

namespace {

using Tasks = std::vector<UkolAgenta>;
using Stav = UkolAgenta::Stav;

struct World {
    const StoreFile& file;
    ManualClock clock{};
    ImmediateExecutor saving{};
    ScriptedRandom random{};
    ScriptedUrlOpener opener{};

    std::unique_ptr<HistorieAgentu> start() {
        return HistorieAgentu::create(file.folder(), {{saving, saving, clock}, random, opener});
    }
};

/// A session id that begins like an option or contains a line break is dropped, a plain one is kept.
void expectSession(const std::optional<std::string>& written, const std::optional<std::string>& held) {
    require(!held || held == written, "a session that nobody wrote");
    if (!written) return;
    const bool isDangerous = written->empty() || written->front() == '-' ||
                             std::ranges::any_of(*written, [](char each) { return each >= 0 && each < ' '; });
    const bool isPlain =
        !written->empty() && written->size() <= 512 && std::ranges::all_of(*written, [](char each) {
            return (each >= 'a' && each <= 'z') || (each >= '0' && each <= '9');
        });
    require(!(held ? isDangerous : isPlain), "the wrong sessions are held");
}

void raise(std::uint64_t& revize) {
    if (revize < std::numeric_limits<std::uint64_t>::max()) ++revize;
}

/// The expected tasks after a start with these tasks in the file.
Tasks atStart(Tasks tasks, Date now) {
    sortNewestFirst(tasks, &UkolAgenta::zalozeno);
    if (tasks.size() > 50) tasks.resize(50);
    for (auto& ukol : tasks) {
        if (ukol.stav != Stav::bezi) continue;
        ukol.stav = Stav::preruseno;
        if (!ukol.dokonceno) ukol.dokonceno = now;
        ukol.aktualizovano = now;
        raise(ukol.revize);
    }
    return tasks;
}

void expectHeld(const HistorieAgentu& historie, Tasks&& expected) {
    const auto& held = historie.polozky();
    require(held.size() == expected.size(), "another number of tasks");
    for (std::size_t index = 0; index < held.size(); ++index) {
        expectSession(expected[index].relace, held[index].relace);
        expected[index].relace = held[index].relace;
        require(held[index] == expected[index], "a task is held as another one");
    }
}

/// Renames the first task, or begins one if there is none.
void change(HistorieAgentu& historie) {
    if (historie.polozky().empty()) {
        const auto begun = historie.zaloz({{}, {}, "codex", {}, "Pracuj", "/"});
        return require(historie.polozky() == Tasks{begun} && begun.stav == Stav::bezi, "no new task");
    }
    auto expected = historie.polozky();
    auto& first = expected.front();
    const auto named = historie.renameTask({first.workItemID, {}, {}}, "Jiný název");
    raise(first.revize);
    first.nazev = "Jiný název";
    first.aktualizovano = named->aktualizovano;
    require(historie.polozky() == expected, "another change than the wanted one");
}

void expectToTravel(const Tasks& tasks) {
    for (const auto& ukol : tasks)
        require(decode<WorkItem>(encode(asWorkItem(ukol))).has_value(), "a task has no form for the phone");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const StoreFile file("TalkSpan/agent-tasks.json");
    World world{file};
    const auto input = asText({data, size});
    const auto read = decode<Tasks>(input);
    if (read) expectToTravel(*read);

    file.lay(input);
    const auto historie = world.start();
    require(historie->potiz().has_value() == !read.has_value(), "a failure is not told, or told without one");
    expectHeld(*historie, atStart(read.value_or(Tasks{}), world.clock.now()));
    change(*historie);
    require(!historie->potiz(), "the tasks cannot be saved");
    expectHeld(*world.start(), atStart(historie->polozky(), world.clock.now()));
    file.expectAside(input, read ? StoreFile::Read::all : StoreFile::Read::nothing);
    return 0;
}

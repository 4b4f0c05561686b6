#include "tests/model/ModelMac.h"

#include "shared/base/Require.h"

#include <algorithm>
#include <fstream>
#include <utility>

namespace morvex {

ModelMac::ModelMac(ManualExecutor& executor, ModelRelay& relay,
                   std::shared_ptr<const DeviceIdentity> identity, const std::filesystem::path& folder,
                   std::uint64_t seed)
    : network(relay, ModelWire::Owner::mac),
      executor_(executor),
      relay_(relay),
      random_(seed),
      folder_(folder) {
    store_.ulozIdentitu(std::move(identity)).value();
    desktop_.folders.homeFolder = folder.string();
    desktop_.programs.answer = [this](const OutsideProgram& program) { return answer(program); };
    std::filesystem::create_directory(folder / "bin");
    std::ofstream(folder / "bin/codex") << "x";
    std::filesystem::permissions(folder / "bin/codex", std::filesystem::perms::owner_all);
    std::filesystem::create_directory(allowedFolder());
    desktop_.picker.answers.push_back({allowedFolder().string()});
}

ModelMac::~ModelMac() {
    stop();
}

void ModelMac::start() {
    companion_ = std::make_unique<Companion>(services());
    features_ = std::make_unique<Features>(*companion_);
    executor_.start(companion_->spustit());
    while (executor_.runUntilIdle() + runDisk() > 0) continue;
    if (!desktop_.picker.answers.empty()) executor_.run(features_->files.slozky().pridat());
}

void ModelMac::stop() {
    if (!companion_) return;
    wake();
    auto isOver = std::make_shared<bool>(false);
    executor_.start([](Companion* companion, std::shared_ptr<bool> over) -> Task<void> {
        co_await companion->shutDown();
        *over = true;
    }(companion_.get(), isOver));
    while (executor_.runUntilIdle() + runDisk() > 0) continue;
    agentEnds();
    while (executor_.runUntilIdle() + runDisk() > 0) continue;
    require(*isOver, "the companion does not come to its end");
    features_.reset();
    companion_.reset();
}

/// The program still has to run to its end, since tasks must end, but it is disconnected, and everything it
/// does on the way is undone.
void ModelMac::crash() {
    std::filesystem::copy(folder_, aside(), std::filesystem::copy_options::recursive);
    const auto items = desktop_.vault.items;
    const auto defaults = desktop_.defaults;
    const auto peer = store_.nactiProtejsek().value();
    const auto programs = desktop_.programs.programs.size();
    const auto writes = writes_;
    const bool wasReachable = std::exchange(network.isReachable, false);
    stop();
    network.isReachable = wasReachable;
    std::filesystem::remove_all(folder_);
    std::filesystem::rename(aside(), folder_);
    desktop_.vault.items = items;
    desktop_.defaults = defaults;
    (peer ? store_.ulozProtejsek(*peer) : store_.smazProtejsek()).value();
    desktop_.programs.programs.resize(programs);
    desktop_.programs.children.resize(std::min(programs, desktop_.programs.children.size()));
    ended_ = desktop_.programs.children.size();
    writes_ = writes;
}

std::vector<MorvexNote> ModelMac::savedNotes() const {
    const auto folder = desktop_.folders.applicationSupport();
    return RecordFile<NotesArchive>(std::filesystem::path(folder) / "Morvex/notes-from-iphone.json")
        .load()
        .notes.records;
}

bool ModelMac::isReady() const {
    return companion_->stav().dostupnost.value().jePouzitelny();
}

void ModelMac::fallAsleep() {
    if (std::exchange(isAsleep_, true)) return;
    desktop_.sleep.fallAsleep();
    executor_.runUntilIdle();
}

void ModelMac::wake() {
    if (!std::exchange(isAsleep_, false)) return;
    relay_.setAsleep(ModelWire::Owner::mac, false);
    clock.advance(std::exchange(slept_, Clock::Duration::zero()));
    desktop_.sleep.wake();
    executor_.runUntilIdle();
}

void ModelMac::advance(Clock::Duration time) {
    isAsleep_ ? void(slept_ += time) : clock.advance(time);
}

std::optional<Clock::Duration> ModelMac::untilNext() const {
    return isAsleep_ ? std::nullopt : clock.untilNext();
}

int ModelMac::runDisk() {
    if (isAsleep_) return 0;
    const auto jobs = disk_.runUntilIdle();
    if (jobs > 0) countFiles();
    return jobs;
}

void ModelMac::countFiles() {
    for (const auto& entry : std::filesystem::directory_iterator(allowedFolder())) {
        ++writes_[entry.path().filename()];
        std::filesystem::remove(entry.path());
    }
}

void ModelMac::agentSpeaks() {
    if (const auto number = agent(); number < desktop_.programs.children.size())
        desktop_.programs.children[number]->listener->output(
            "{\"type\":\"thread.started\",\"thread_id\":\"s1\"}\n");
    executor_.runUntilIdle();
}

void ModelMac::agentEnds() {
    if (const auto number = agent(); number < desktop_.programs.children.size()) {
        auto* listener = desktop_.programs.children[number]->listener;
        listener->output("{\"type\":\"turn.completed\",\"text\":\"Hotovo.\"}\n");
        listener->exited(0);
        listener->ended();
        ended_ = number + 1;
    }
    executor_.runUntilIdle();
}

std::size_t ModelMac::starts(const std::string& argument) const {
    return static_cast<std::size_t>(
        std::ranges::count_if(desktop_.programs.programs, [&](const auto& program) {
            return std::ranges::find(program.args, argument) != program.args.end();
        }));
}

std::size_t ModelMac::writes(const std::string& name) const {
    const auto found = writes_.find(name);
    return found == writes_.end() ? 0 : found->second;
}

std::size_t ModelMac::agent() const {
    auto number = ended_;
    while (number < desktop_.programs.children.size() &&
           (!desktop_.programs.children[number]->listener || answer(desktop_.programs.programs[number])))
        ++number;
    return number;
}

/// Answers for an agent that works until the model ends it, and for a program that ends at once.
std::optional<ScriptedPrograms::Answer> ModelMac::answer(const OutsideProgram& program) const {
    if (program.binary.ends_with("/ls")) return ScriptedPrograms::Answer{.output = program.args.back()};
    if (!program.binary.starts_with(folder_.string())) return ScriptedPrograms::Answer{.status = 127};
    if (program.args.front() == "--version") return ScriptedPrograms::Answer{.output = "agent 1.0\n"};
    return std::nullopt;
}

CompanionServices ModelMac::services() {
    return desktop_.services(
        {.main = executor_, .storage = disk_, .records = disk_, .workers = disk_},
        {.relay = {.executor = executor_, .clock = clock, .sockets = network}, .random = random_}, network,
        store_, {{"PATH", (folder_ / "bin").string() + ":/usr/bin:/bin"}});
}

} // namespace morvex

#include "tests/model/ModelPhone.h"

#include "platform/memory/FixedLocalTime.h"
#include "shared/base/Require.h"
#include "tests/support/ScriptedKeyboard.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace morvex {

/// One run of the program.
struct ModelPhone::Program {
    Program(ModelPhone& phone, Options given)
        : records(PhoneRecords::load(phone.folder_, phone.clock, phone.random_)),
          tasks(PhoneTasks::load(phone.folder_)),
          settings(phone.vault_, "morvex-phone"),
          inbox(phone.clock, interruption.get_token()),
          keyboard(inbox),
          terminal({phone.answers_}, {phone.notes_}),
          parts{
              .options = std::move(given),
              .link = {.relay = {.executor = phone.executor_, .clock = phone.clock, .sockets = phone.network},
                       .random = phone.random_},
              .http = phone.network,
              .localTime = localTime,
              .store = phone.store_,
              .settings = settings,
              .records = records,
              .tasks = tasks,
              .inbox = inbox,
              .keyboard = keyboard,
              .terminal = terminal} {
        keyboard.interactive = true;
    }

    std::stop_source interruption;
    FixedLocalTime localTime;
    PhoneRecords records;
    PhoneTasks tasks;
    PhoneSettings settings;
    Inbox inbox;
    ScriptedKeyboard keyboard;
    Terminal terminal;
    Phone parts;
    bool isOver = false;
};

ModelPhone::ModelPhone(ManualExecutor& executor, ModelRelay& relay,
                       std::shared_ptr<const DeviceIdentity> identity, std::filesystem::path folder,
                       std::uint64_t seed)
    : network(relay, ModelWire::Owner::phone),
      executor_(executor),
      random_(seed),
      folder_(std::move(folder)) {
    store_.ulozIdentitu(std::move(identity)).value();
}

ModelPhone::~ModelPhone() {
    stop();
}

void ModelPhone::start(const std::vector<const char*>& arguments) {
    stop();
    auto options = Options::parse(arguments).value();
    isShell_ = options.command == Options::Command::shell;
    program_ = std::make_unique<Program>(*this, std::move(options));
    executor_.start(drive(program_.get()));
    executor_.runUntilIdle();
}

void ModelPhone::stop() {
    if (!program_) return;
    program_->interruption.request_stop();
    executor_.runUntilIdle();
    require(program_->isOver, "the phone's program outlives its interruption");
}

/// The program still has to run to its end, since tasks must end, but it is disconnected, and everything it
/// does on the way is undone.
void ModelPhone::crash() {
    const auto aside = folder_.string() + "-aside";
    std::filesystem::copy(folder_, aside, std::filesystem::copy_options::recursive);
    const auto items = vault_.items;
    const auto peer = mac();
    const auto answered = answers();
    const bool wasReachable = std::exchange(network.isReachable, false);
    stop();
    network.isReachable = wasReachable;
    std::filesystem::remove_all(folder_);
    std::filesystem::rename(aside, folder_);
    vault_.items = items;
    (peer ? store_.ulozProtejsek(*peer) : store_.smazProtejsek()).value();
    answers_.str(answered);
    answers_.seekp(0, std::ios::end);
}

bool ModelPhone::isRunning() const {
    return program_ && !program_->isOver;
}

void ModelPhone::type(std::string line) {
    program_->keyboard.type(std::move(line));
    executor_.runUntilIdle();
}

void ModelPhone::forgetLines() {
    program_->keyboard.forget();
}

const PhoneRecords& ModelPhone::records() const {
    return program_->records;
}

const PhoneTasks& ModelPhone::tasks() const {
    return program_->tasks;
}

std::string ModelPhone::answers() const {
    return answers_.str();
}

std::string ModelPhone::notes() const {
    return notes_.str();
}

Task<void> ModelPhone::drive(Program* program) {
    (void)co_await runCommand(program->parts);
    program->isOver = true;
}

} // namespace morvex

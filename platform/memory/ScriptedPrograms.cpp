#include "platform/memory/ScriptedPrograms.h"

#include <utility>

namespace morvex {

namespace {

class Handle final : public ChildProcess {
  public:
    explicit Handle(std::shared_ptr<ScriptedPrograms::Child> child) : child_(std::move(child)) {}

    ~Handle() override { child_->listener = nullptr; }

    void signalGroup(ChildSignal signal) override { child_->signals.push_back(signal); }

    void signalAll(ChildSignal signal) override { signalGroup(signal); }

    void abandonOutput() override {
        child_->isAbandoned = true;
        child_->listener->ended();
    }

  private:
    std::shared_ptr<ScriptedPrograms::Child> child_;
};

void play(ChildListener& listener, const ScriptedPrograms::Answer& answer) {
    if (!answer.output.empty()) listener.output(answer.output);
    if (!answer.errors.empty()) listener.errors(answer.errors);
    listener.exited(answer.status);
    listener.ended();
}

} // namespace

Result<std::unique_ptr<ChildProcess>> ScriptedPrograms::launch(const OutsideProgram& program,
                                                               ChildListener& listener) {
    programs.push_back(program);
    if (auto found = problems.find(program.binary); found != problems.end()) return fail(found->second);
    auto child = std::make_shared<Child>(&listener);
    children.push_back(child);
    if (auto given = answer(program))
        Executor::current()->post([child, given = *std::move(given)] {
            if (child->listener) play(*child->listener, given);
        });
    return std::make_unique<Handle>(child);
}

} // namespace morvex

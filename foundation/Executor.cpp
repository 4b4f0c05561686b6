#include "foundation/Executor.h"

namespace morvex {

namespace {
thread_local Executor* running = nullptr;
}

Executor* Executor::current() {
    return running;
}

Executor::Running::Running(Executor& executor) : previous_(running) {
    running = &executor;
}

Executor::Running::~Running() {
    running = previous_;
}

} // namespace morvex

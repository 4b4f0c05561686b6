#include "app/agents/Adaptery.h"

#include "app/agents/ClaudeCodeAdapter.h"
#include "app/agents/CodexAdapter.h"

namespace morvex {

namespace {

template <class Adapter> void add(Adaptery& all) {
    auto adapter = std::make_shared<const Adapter>();
    all.emplace(adapter->id(), std::move(adapter));
}

} // namespace

Adaptery knownAdapters() {
    Adaptery all;
    add<CodexAdapter>(all);
    add<ClaudeCodeAdapter>(all);
    return all;
}

} // namespace morvex

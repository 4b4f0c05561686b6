#include "relay/MemoryLedger.h"

#include <algorithm>

namespace morvex {

void MemoryLedger::enter(Line& line) {
    leave(line);
    const auto site = sites_.try_emplace(line.site()).first;
    ++site->second.lines;
    lines_[&line] = {.site = site};
}

void MemoryLedger::leave(Line& line) {
    const auto found = lines_.find(&line);
    if (found == lines_.end()) return;
    const auto [site, held] = found->second;
    sum_ -= held;
    site->second.held -= held;
    if (--site->second.lines == 0) sites_.erase(site);
    lines_.erase(found);
}

void MemoryLedger::weigh(Line& line) {
    const auto found = lines_.find(&line);
    if (found == lines_.end()) return;
    auto& [site, held] = found->second;
    sum_ -= held;
    site->second.held -= held;
    held = line.held();
    sum_ += held;
    site->second.held += held;
}

Line& MemoryLedger::greediest() const {
    const auto* site =
        &std::ranges::max_element(sites_, {}, [](const auto& one) { return one.second.held; })->second;
    const auto heldOfSite = [&](const auto& line) {
        const auto& [place, held] = line.second;
        return &place->second == site ? held + 1 : 0;
    };
    return *std::ranges::max_element(lines_, {}, heldOfSite)->first;
}

} // namespace morvex

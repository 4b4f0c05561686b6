#include "app/ui/models/CompanionModel.h"

#include <utility>

namespace morvex {

CompanionModel::CompanionModel(Companion& companion, Surroundings surroundings)
    : surroundings_(std::move(surroundings)),
      link_(companion, surroundings_.clock, surroundings_.scope),
      pairing_(companion, {surroundings_.clock, surroundings_.scope, surroundings_.clipboard}),
      approval_(companion.schvalovani()),
      integrations_(companion),
      folders_(companion.slozky(), surroundings_.scope),
      wakefulness_(companion.bdelost()),
      about_(companion.stav(), QString::fromStdString(surroundings_.appVersion)) {}

void CompanionModel::openMainWindow() {
    surroundings_.openMainWindow();
}

void CompanionModel::quit() {
    surroundings_.quit();
}

} // namespace morvex

#include "tests/soak/Sample.h"

#include <algorithm>

namespace morvex {

double middleOfTenth(const std::vector<Sample>& samples, std::size_t tenth, double Sample::* figure) {
    const auto last = samples.size() * tenth / 10;
    const auto first = samples.size() * (tenth - 1) / 10;
    std::vector<double> figures;
    for (auto index = first; index < last; ++index) figures.push_back(samples[index].*figure);
    std::ranges::sort(figures);
    return figures.at(figures.size() / 2);
}

} // namespace morvex

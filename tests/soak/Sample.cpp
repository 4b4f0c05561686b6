#include "tests/soak/Sample.h"

#include <algorithm>

namespace morvex {

namespace {

double middle(std::vector<double> figures) {
    std::ranges::sort(figures);
    return figures.at(figures.size() / 2);
}

} // namespace

double middleOfTwoTenths(const std::vector<Sample>& samples, std::size_t tenth, double Sample::* figure) {
    std::vector<double> figures;
    for (auto index = samples.size() * (tenth - 1) / 10; index < samples.size() * (tenth + 1) / 10; ++index)
        figures.push_back(samples[index].*figure);
    return middle(std::move(figures));
}

double slopeAfterWarmUp(const std::vector<Sample>& samples, double Sample::* figure) {
    std::vector<double> slopes;
    for (auto left = samples.size() / 10; left < samples.size(); ++left)
        for (auto right = left + 1; right < samples.size(); ++right)
            slopes.push_back((samples[right].*figure - samples[left].*figure) /
                             static_cast<double>(samples[right].envelopes - samples[left].envelopes));
    return middle(std::move(slopes));
}

} // namespace morvex

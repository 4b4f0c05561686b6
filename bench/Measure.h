#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <vector>

namespace morvex {

using Milliseconds = std::chrono::duration<double, std::milli>;

inline double milliseconds(const std::function<void()>& work) {
    auto start = std::chrono::steady_clock::now();
    work();
    return Milliseconds(std::chrono::steady_clock::now() - start).count();
}

/// The middle of what was measured; `figures` is not empty.
inline double median(std::vector<double> figures) {
    std::ranges::sort(figures);
    return figures[figures.size() / 2];
}

/// Median in milliseconds.
inline double median(int times, const std::function<void()>& work) {
    std::vector<double> all;
    for (int i = 0; i < times; ++i) all.push_back(milliseconds(work));
    return median(std::move(all));
}

/// Medians in milliseconds. The works take turns, so that whatever else the computer does slows all of them.
inline std::vector<double> medians(int times, const std::vector<std::function<void()>>& works) {
    std::vector<std::vector<double>> all(works.size());
    for (int i = 0; i < times; ++i)
        for (std::size_t work = 0; work < works.size(); ++work)
            all[work].push_back(milliseconds(works[work]));
    std::vector<double> middle;
    for (auto& figures : all) middle.push_back(median(std::move(figures)));
    return middle;
}

} // namespace morvex

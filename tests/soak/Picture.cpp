#include "tests/soak/Picture.h"

#include <algorithm>
#include <cstdio>

namespace morvex {

namespace {

constexpr double width = 900;
constexpr double left = 20;
constexpr double panelHeight = 110;
constexpr double panelStep = 160;
constexpr double firstPanel = 80;

struct Curve {
    const char* name;
    double Sample::* figure;
};

constexpr Curve curves[] = {
    {"latency of a status call, µs (median)", &Sample::latency},
    {"latency of a plain echo over the same hops, µs (median)", &Sample::echo},
    {"these two, times", &Sample::ratio},
    {"processor time of a call, µs", &Sample::processor},
    {"heap in use, MiB", &Sample::heap},
    {"resident memory, MiB", &Sample::resident},
    {"open descriptors", &Sample::descriptors},
};

std::string number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", value);
    return text;
}

std::string label(double x, double y, const std::string& text) {
    return "<text x=\"" + number(x) + "\" y=\"" + number(y) + "\">" + text + "</text>\n";
}

/// A panel's scale begins at zero, so that a growth looks as large as it is.
std::string panel(const std::vector<Sample>& samples, const Curve& curve, double top) {
    const auto highest = std::ranges::max(samples, {}, curve.figure).*curve.figure;
    const auto step = (width - 2 * left) / static_cast<double>(std::max<std::size_t>(1, samples.size() - 1));
    std::string points;
    for (std::size_t index = 0; index < samples.size(); ++index) {
        const auto share = highest > 0 ? samples[index].*curve.figure / highest : 0;
        points += number(left + step * static_cast<double>(index)) + ',' +
                  number(top + panelHeight * (1 - share)) + ' ';
    }
    return label(left, top - 8, std::string(curve.name) + "; the frame is 0 to " + number(highest)) +
           "<rect x=\"" + number(left) + "\" y=\"" + number(top) + "\" width=\"" + number(width - 2 * left) +
           "\" height=\"" + number(panelHeight) + "\" fill=\"none\" stroke=\"#bbb\"/>\n<polyline points=\"" +
           points + "\" fill=\"none\" stroke=\"#1a5fb4\" stroke-width=\"1.5\"/>\n";
}

} // namespace

std::string pictureOf(const std::vector<Sample>& samples, const std::string& title) {
    const auto height = firstPanel + panelStep * static_cast<double>(std::size(curves));
    std::string picture = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + number(width) +
                          "\" height=\"" + number(height) +
                          "\" font-family=\"sans-serif\" font-size=\"13\">\n" +
                          "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n" + label(left, 30, title);
    auto top = firstPanel;
    for (const auto& curve : curves) {
        picture += panel(samples, curve, top);
        top += panelStep;
    }
    return picture + "</svg>\n";
}

} // namespace morvex

#include "phone/SettingsText.h"

#include "shared/wire/Json.h"

#include <boost/json.hpp>

namespace morvex {

namespace {

StyledLine chosen(const std::string& label, const std::string& value) {
    if (value.empty()) return {{label, Style::faint}, {"nezvoleno", Style::faint}};
    return {{label, Style::faint}, {value}};
}

} // namespace

std::vector<StyledLine> preferencesLines(const CompanionPreferences& preferences) {
    std::vector<StyledLine> lines{chosen("Jazyk      ", preferences.language),
                                  chosen("Hlas       ", preferences.voice)};
    for (const auto& place : preferences.places.value_or(std::vector<CompanionPlace>()))
        lines.push_back({{"Místo      ", Style::faint}, {place.name, Style::strong}, {": " + place.address}});
    return lines;
}

std::vector<StyledLine> appLines(const std::vector<CompanionCustomApp>& apps) {
    if (apps.empty()) return {{{"Žádné vlastní aplikace.", Style::faint}}};
    std::vector<StyledLine> lines;
    lines.reserve(apps.size());
    for (const auto& app : apps)
        lines.push_back({{app.name, Style::strong},
                         {"  " + app.endpoint},
                         {app.token.empty() ? "" : "  s tokenem", Style::faint}});
    return lines;
}

std::string appsJson(const std::vector<CompanionCustomApp>& apps) {
    boost::json::array rows;
    for (const auto& app : apps)
        rows.push_back(boost::json::object{{"id", app.id},
                                           {"name", app.name},
                                           {"endpoint", app.endpoint},
                                           {"hasToken", !app.token.empty()}});
    return encode(boost::json::value(std::move(rows)));
}

} // namespace morvex

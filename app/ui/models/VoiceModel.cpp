#include "app/ui/models/VoiceModel.h"

#include "app/ui/Localized.h"

#include <QVariantMap>

#include <algorithm>
#include <array>
#include <string_view>

namespace morvex {

namespace {

struct Language {
    std::string_view mode;
    Sentence name;
};

/// Each language has the name that its speakers use.
Sentence asSpoken(const char* name) {
    return Sentence(name);
}

const std::array<Language, 6> languageModes{{
    {MacVoiceController::phoneMode, "Podle iPhonu"_sentence},
    {"cs", asSpoken("Čeština")},
    {"en", asSpoken("English")},
    {"de", asSpoken("Deutsch")},
    {"fr", asSpoken("Français")},
    {"es", asSpoken("Español")},
}};

} // namespace

VoiceModel::VoiceModel(MacVoiceController& hlas) : hlas_(hlas) {
    follow(hlas_.priZmene([this] { refresh(); }));
}

bool VoiceModel::hasKey() const {
    return !hlas_.apiKey().empty();
}

QVariantList VoiceModel::languages() const {
    QVariantList rows;
    for (const auto& [mode, name] : languageModes)
        rows.push_back(QVariantMap{{QStringLiteral("mode"), QString::fromUtf8(mode)},
                                   {QStringLiteral("name"), localized(name)}});
    return rows;
}

int VoiceModel::languageIndex() const {
    auto found = std::ranges::find(languageModes, hlas_.languageMode(), &Language::mode);
    return static_cast<int>(found - languageModes.begin());
}

void VoiceModel::setLanguageMode(const QString& mode) {
    hlas_.setLanguageMode(mode.toStdString());
}

} // namespace morvex

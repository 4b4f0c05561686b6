#include "app/voice/LanguageInForce.h"

#include "app/voice/VoiceKeys.h"

namespace morvex {

namespace {

const std::string czech = "cs";

}

std::string languageInForce(const UserDefaults& defaults) {
    if (!defaults.boolean(voiceKeys::languageReceived).value_or(false)) return czech;
    return defaults.text(voiceKeys::language).value_or(czech);
}

} // namespace morvex

#include "app/voice/MacVoiceController.h"

#include "app/voice/LanguageInForce.h"
#include "app/voice/VoiceKeys.h"
#include "foundation/Text.h"
#include "shared/wire/Json.h"

#include <algorithm>
#include <utility>

namespace morvex {

namespace {

constexpr const char* keyAccount = "openai.apiKey";
constexpr const char* placesAccount = "companion.places";
constexpr const char* usualVoice = "sage";
constexpr const char* usualLanguage = "cs";

const std::string waitsForKey = "Čekám na bezpečné předání OpenAI klíče z iPhonu.";

bool isSupportedLanguage(std::string_view code) {
    return std::ranges::count(MacVoiceController::supportedLanguages, code) > 0;
}

bool isSupportedVoice(std::string_view name) {
    return std::ranges::count(MacVoiceController::supportedVoices, name) > 0;
}

bool isMode(std::string_view mode) {
    return mode == MacVoiceController::phoneMode || isSupportedLanguage(mode);
}

std::string supportedOrUsual(std::string code) {
    return isSupportedLanguage(code) ? std::move(code) : usualLanguage;
}

std::string storedMode(const UserDefaults& defaults) {
    auto mode = defaults.text(voiceKeys::languageMode).value_or("");
    return isMode(mode) ? mode : std::string(MacVoiceController::phoneMode);
}

std::string storedLanguage(const UserDefaults& defaults, const std::string& mode) {
    if (isSupportedLanguage(mode)) return mode;
    return supportedOrUsual(defaults.text(voiceKeys::language).value_or(usualLanguage));
}

MacHotkey storedShortcut(const UserDefaults& defaults) {
    auto bytes = defaults.data(voiceKeys::shortcut);
    return bytes ? decode<MacHotkey>(*bytes).value_or(MacHotkey{}) : MacHotkey{};
}

} // namespace

/// A stored voice is used even if it is not among the supported ones.
MacVoiceController::MacVoiceController(UserDefaults& defaults, const Keychain& keychain)
    : defaults_(defaults),
      keychain_(keychain),
      voice_(defaults.text(voiceKeys::voice).value_or(usualVoice)),
      languageMode_(storedMode(defaults)),
      languageCode_(storedLanguage(defaults, languageMode_)),
      textLanguage_(languageInForce(defaults)),
      shortcut_(storedShortcut(defaults)) {}

Task<void> MacVoiceController::load() {
    auto key = co_await keychain_.read(keyAccount);
    auto places = co_await keychain_.read(placesAccount);
    publish(apiKey_, std::move(key).value_or(""));
    auto decoded = decode<std::vector<CompanionPlace>>(places.value_or(""));
    if (decoded) publish(places_, *std::move(decoded));
}

Task<void> MacVoiceController::setAPIKey(std::string key) {
    key = trim(key);
    auto saved = co_await keychain_.save(key, keyAccount);
    if (!saved) {
        publish(credentialProblem_, std::optional(saved.error().popis().czech()));
        co_return;
    }
    auto problem = key.empty() ? std::optional(waitsForKey) : std::nullopt;
    publish(apiKey_, std::move(key));
    publish(credentialProblem_, std::move(problem));
}

Task<void> MacVoiceController::applyPreferences(CompanionPreferences preferences) {
    if (isSupportedLanguage(preferences.language)) applyLanguage(preferences.language);
    if (isSupportedVoice(preferences.voice)) setVoice(preferences.voice);
    if (preferences.places) co_await setPlaces(*std::move(preferences.places));
    co_await defaults_.saved();
}

void MacVoiceController::applyLanguage(const std::string& code) {
    DefaultsValues values{{voiceKeys::phoneLanguage, code}, {voiceKeys::languageReceived, true}};
    const bool isInForce = languageMode_ == phoneMode;
    if (isInForce) values.emplace(voiceKeys::language, code);
    defaults_.setTogether(std::move(values));
    if (isInForce) publish(languageCode_, code);
    publish(textLanguage_, languageInForce(defaults_));
}

void MacVoiceController::setLanguageMode(const std::string& mode) {
    if (!isMode(mode)) return;
    auto code = mode == phoneMode
                    ? supportedOrUsual(defaults_.text(voiceKeys::phoneLanguage).value_or(languageCode_))
                    : mode;
    defaults_.setTogether({{voiceKeys::languageMode, mode}, {voiceKeys::language, code}});
    publish(languageMode_, mode);
    publish(languageCode_, std::move(code));
    publish(textLanguage_, languageInForce(defaults_));
}

void MacVoiceController::setVoice(const std::string& name) {
    if (voice_ == name) return;
    defaults_.set(voiceKeys::voice, name);
    publish(voice_, name);
}

void MacVoiceController::setShortcut(const MacHotkey& hotkey) {
    defaults_.set(voiceKeys::shortcut, toBytes(encode(hotkey)));
    publish(shortcut_, hotkey);
}

Task<void> MacVoiceController::setPlaces(std::vector<CompanionPlace> places) {
    auto json = encode(places);
    publish(places_, std::move(places));
    (void)co_await keychain_.save(std::move(json), placesAccount);
}

std::optional<std::string> MacVoiceController::resolvePlace(std::optional<std::string> text) const {
    if (!text) return text;
    auto place = std::ranges::find_if(
        places_, [name = fold(*text)](const CompanionPlace& each) { return fold(each.name) == name; });
    return place == places_.end() ? text : place->address;
}

template <class T> void MacVoiceController::publish(T& field, T value) {
    if (field == value) return;
    field = std::move(value);
    priZmene_.tell();
}

} // namespace morvex

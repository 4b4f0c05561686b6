#pragma once

#include "app/keychain/Keychain.h"
#include "app/voice/MacHotkey.h"
#include "foundation/Signal.h"
#include "foundation/Task.h"
#include "platform/ports/UserDefaults.h"
#include "shared/wire/CompanionRecords.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

/// The preferences of this computer's own voice assistant: the OpenAI key, the voice, the language, the
/// shortcut and the named places. The phone sends most of them. The key and the places are stored in the
/// keychain, the rest in the user defaults. Owned by the companion; main thread only.
///
/// Order of calls: the constructor, then `load` once, which must end before any message of the phone is
/// handled, then the rest. Keys and lists of places take effect in the order of the calls.
class MacVoiceController {
  public:
    static constexpr std::array<std::string_view, 5> supportedLanguages{"cs", "en", "de", "fr", "es"};
    static constexpr std::array<std::string_view, 10> supportedVoices{
        "marin", "cedar", "alloy", "ash", "ballad", "coral", "echo", "sage", "shimmer", "verse"};
    /// The language mode that follows the phone; the others are the supported languages.
    static constexpr std::string_view phoneMode = "phone";

    /// Reads the user defaults. Both outlive this object.
    MacVoiceController(UserDefaults& defaults, const Keychain& keychain);

    /// Reads the key and the places from the keychain.
    Task<void> load();

    /// Stores the key, trimmed; an empty one deletes it. The key is used only once the keychain has it; if
    /// the keychain refuses, the previous key stays in use and `credentialProblem` says why.
    Task<void> setAPIKey(std::string key);

    /// Takes over what the phone sent, each field independently. Unsupported languages and voices are
    /// ignored, and so is a refusal of the keychain to store the places. Ends when everything is stored or
    /// could not be stored.
    Task<void> applyPreferences(CompanionPreferences preferences);

    /// Takes `phoneMode` or a supported language; anything else is ignored.
    void setLanguageMode(const std::string& mode);
    void setVoice(const std::string& name);
    void setShortcut(const MacHotkey& hotkey);

    /// The address of the place with this name, ignoring case and diacritics. If there is none, the text
    /// itself, which may be an address.
    [[nodiscard]] std::optional<std::string> resolvePlace(std::optional<std::string> text) const;

    /// Empty if there is none. Secret.
    [[nodiscard]] const std::string& apiKey() const { return apiKey_; }

    /// Why a conversation cannot start; for views.
    [[nodiscard]] const std::optional<std::string>& credentialProblem() const { return credentialProblem_; }

    [[nodiscard]] const std::string& voice() const { return voice_; }

    [[nodiscard]] const std::string& languageMode() const { return languageMode_; }

    /// The supported language that was chosen here or on the phone.
    [[nodiscard]] const std::string& languageCode() const { return languageCode_; }

    /// The language of the fixed texts, see `languageInForce`.
    [[nodiscard]] const std::string& textLanguage() const { return textLanguage_; }

    [[nodiscard]] const MacHotkey& shortcut() const { return shortcut_; }

    [[nodiscard]] const std::vector<CompanionPlace>& places() const { return places_; }

    /// Called after each change of a preference.
    [[nodiscard]] Connection priZmene(std::function<void()> callback) {
        return priZmene_.connect(std::move(callback));
    }

  private:
    void applyLanguage(const std::string& code);
    Task<void> setPlaces(std::vector<CompanionPlace> places);
    template <class T> void publish(T& field, T value);

    UserDefaults& defaults_;
    const Keychain& keychain_;
    std::string apiKey_;
    std::optional<std::string> credentialProblem_;
    std::string voice_;
    std::string languageMode_;
    std::string languageCode_;
    std::string textLanguage_;
    MacHotkey shortcut_;
    std::vector<CompanionPlace> places_;
    Signal<> priZmene_;
};

} // namespace morvex

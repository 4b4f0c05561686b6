#pragma once

namespace morvex::voiceKeys {

/// Keys of the voice assistant in the user defaults.
inline constexpr const char* voice = "voice.name";
inline constexpr const char* shortcut = "voice.hotkey";
inline constexpr const char* languageMode = "app.language.mode";
inline constexpr const char* language = "app.language";
inline constexpr const char* phoneLanguage = "app.language.phone";
inline constexpr const char* languageReceived = "app.language.receivedFromPhone";

} // namespace morvex::voiceKeys

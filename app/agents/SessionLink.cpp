#include "app/agents/SessionLink.h"

#include "app/agents/AgentId.h"
#include "app/agents/SessionId.h"
#include "shared/base/Ascii.h"
#include "shared/base/Hex.h"

#include <string_view>

namespace morvex {

namespace {

bool isUnreserved(char letter) {
    return isAsciiLetterOrDigit(letter) || std::string_view("-._~").contains(letter);
}

/// RFC 3986, section 2.1: everything but the unreserved characters and those of `kept`.
std::string percentEncoded(std::string_view text, std::string_view kept = {}) {
    std::string encoded;
    for (const char letter : text) {
        if (isUnreserved(letter) || kept.contains(letter)) {
            encoded += letter;
            continue;
        }
        const auto byte = static_cast<unsigned char>(letter);
        encoded.append({'%', upperHexDigits[byte >> 4], upperHexDigits[byte & 15]});
    }
    return encoded;
}

} // namespace

std::optional<SessionLink> SessionLink::of(const UkolAgenta& ukol) {
    if (!SessionId::usable(ukol.relace)) return std::nullopt;
    const auto session = percentEncoded(*ukol.relace);
    if (ukol.nastroj == AgentId::claudeCode)
        return SessionLink{
            "claude://resume?session=" + session + "&cwd=" + percentEncoded(ukol.slozka, "/"),
            "Relaci se nepodařilo otevřít. Zkontroluj, že je nainstalovaná aktuální aplikace Claude."_sentence};
    if (ukol.nastroj == AgentId::codex)
        return SessionLink{
            "codex://threads/" + session,
            "Relaci se nepodařilo otevřít. Zkontroluj, že je nainstalovaná aplikace Codex."_sentence};
    return std::nullopt;
}

} // namespace morvex

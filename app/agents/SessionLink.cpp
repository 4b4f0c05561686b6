#include "app/agents/SessionLink.h"

#include "app/agents/AgentId.h"
#include "app/agents/SessionId.h"
#include "shared/base/PercentEncoding.h"

namespace morvex {

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

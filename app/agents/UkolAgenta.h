#pragma once

#include "shared/base/Sentence.h"
#include "shared/base/Uuid.h"
#include "shared/wire/Codec.h"
#include "shared/wire/NumericDate.h"
#include "shared/wire/RawValues.h"
#include "shared/wire/WorkItem.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

/// One task of a coding agent, as the history keeps it. Its JSON is a record of the history's file; what
/// older files lack is filled in on reading, and such a task counts as delivered.
struct UkolAgenta {
    enum class Stav { bezi, hotovo, chyba, preruseno };

    Uuid id;
    Uuid workItemID; ///< the phone's name of the task
    std::optional<Uuid> conversationID;
    std::string nastroj; ///< the agent's id
    std::string nazev;
    std::string instrukce;
    std::string slozka; ///< absolute path
    NumericDate zalozeno;
    std::optional<NumericDate> dokonceno;
    std::optional<std::string> relace; ///< the agent's session
    Stav stav = Stav::bezi;
    std::optional<std::string> shrnuti; ///< what the agent said at the end
    std::optional<Sentence> chyba;
    NumericDate aktualizovano;
    std::uint64_t revize = 1;
    std::uint64_t dorucenaRevize = 0; ///< what the phone has acknowledged

    bool operator==(const UkolAgenta&) const = default;
};

template <>
inline constexpr std::array<std::string_view, 4> rawValues<UkolAgenta::Stav>{"bezi", "hotovo", "chyba",
                                                                             "preruseno"};

extern template struct Codec<UkolAgenta>;
/// The whole file.
extern template struct Codec<std::vector<UkolAgenta>>;

/// The task as the phone is told of it.
WorkItem jakoWorkItem(const UkolAgenta& ukol);
WorkItemStatus::Case stavProTelefon(UkolAgenta::Stav stav);

} // namespace morvex

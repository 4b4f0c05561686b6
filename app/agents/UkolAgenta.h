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

/// One task of a coding agent, as the history stores it. Its JSON is a record of the history's file; fields
/// that older files lack are filled in on reading, and such a task counts as delivered.
struct UkolAgenta {
    enum class Stav { bezi, hotovo, chyba, preruseno };

    Uuid id;
    Uuid workItemID; ///< the phone's id of the task
    std::optional<Uuid> conversationID;
    std::string nastroj; ///< the agent's id
    std::string nazev;
    std::string instrukce;
    std::string slozka; ///< absolute path
    NumericDate zalozeno;
    std::optional<NumericDate> dokonceno;
    std::optional<std::string> relace; ///< the agent's session
    Stav stav = Stav::bezi;
    std::optional<std::string> shrnuti; ///< the agent's final message
    std::optional<Sentence> chyba;
    NumericDate aktualizovano;
    std::uint64_t revize = 1;
    std::uint64_t dorucenaRevize = 0; ///< the revision that the phone has acknowledged

    bool operator==(const UkolAgenta&) const = default;
};

template <>
inline constexpr std::array<std::string_view, 4> rawValues<UkolAgenta::Stav>{"bezi", "hotovo", "chyba",
                                                                             "preruseno"};

extern template struct Codec<UkolAgenta>;
/// The whole file.
extern template struct Codec<std::vector<UkolAgenta>>;

/// The task as it is sent to the phone.
WorkItem asWorkItem(const UkolAgenta& ukol);
WorkItemStatus::Case statusForPhone(UkolAgenta::Stav stav);

} // namespace morvex

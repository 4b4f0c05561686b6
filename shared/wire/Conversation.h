#pragma once

#include "shared/base/Date.h"
#include "shared/base/Uuid.h"
#include "shared/wire/Codec.h"
#include "shared/wire/RawValues.h"

#include <string>
#include <vector>

namespace morvex {

enum class ConversationRole { user, assistant };

template <> inline constexpr std::array<std::string_view, 2> rawValues<ConversationRole>{"user", "assistant"};

struct ConversationTurn {
    Uuid id;
    ConversationRole role = ConversationRole::user;
    std::string text;
    Date createdAt;

    bool operator==(const ConversationTurn&) const = default;
};

struct Conversation {
    Uuid id;
    std::string title;
    Date createdAt;
    Date updatedAt;
    std::vector<ConversationTurn> turns;

    bool operator==(const Conversation&) const = default;
};

extern template struct Codec<ConversationTurn>;
extern template struct Codec<Conversation>;

} // namespace morvex

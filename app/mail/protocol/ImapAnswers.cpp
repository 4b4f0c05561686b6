#include "app/mail/protocol/ImapAnswers.h"

#include "app/mail/protocol/ReplyLines.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace morvex {

namespace {

template <class Number> std::optional<Number> numberIn(std::string_view text) {
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

std::vector<std::uint32_t> uidsIn(std::string_view words) {
    std::vector<std::uint32_t> uids;
    while (!words.empty()) {
        const auto end = std::min(words.find(' '), words.size());
        if (const auto uid = numberIn<std::uint32_t>(words.substr(0, end)); uid && *uid > 0)
            uids.push_back(*uid);
        words.remove_prefix(std::min(end + 1, words.size()));
    }
    return uids;
}

} // namespace

std::int64_t existingMessages(std::string_view lines) {
    constexpr std::string_view untagged = "* ";
    ReplyLines reply(lines);
    while (const auto line = reply.next()) {
        if (!line->starts_with(untagged) || !line->contains(" EXISTS")) continue;
        const auto number = line->substr(untagged.size());
        const auto count = numberIn<std::int64_t>(number.substr(0, number.find(' ')));
        if (count && *count >= 0) return *count;
    }
    return 0;
}

std::vector<std::uint32_t> foundUids(std::string_view lines) {
    constexpr std::string_view found = "* SEARCH";
    ReplyLines reply(lines);
    while (const auto line = reply.next()) {
        if (!line->starts_with(found)) continue;
        auto uids = uidsIn(line->substr(found.size()));
        std::ranges::reverse(uids);
        return uids;
    }
    return {};
}

} // namespace morvex

#include "app/organizer/AnswerList.h"

#include "shared/base/FrameLimit.h"

#include <utility>

namespace morvex {

namespace {

/// What every value takes in the message besides its text.
constexpr std::size_t bytesOfValue = 4;

std::size_t bytesOf(const boost::json::value& value) {
    std::size_t bytes = bytesOfValue;
    if (const auto* text = value.if_string()) bytes += text->size();
    if (const auto* texts = value.if_array())
        for (const auto& text : *texts) bytes += bytesOf(text);
    return bytes;
}

} // namespace

void AnswerList::add(boost::json::object entry) {
    if (bytes_ > frameLimit) return;
    for (const auto& member : entry) bytes_ += member.key().size() + bytesOf(member.value());
    entries_.emplace_back(std::move(entry));
}

ToolOutcome AnswerList::outcome(std::string_view key) && {
    if (bytes_ > frameLimit) return ToolOutcome::tooLong();
    return ToolOutcome::done({{key, std::move(entries_)}});
}

} // namespace morvex

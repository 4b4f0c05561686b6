#include "app/mail/protocol/MailHeader.h"

#include "app/mail/protocol/QuotedPrintable.h"
#include "app/mail/protocol/ReplyLines.h"
#include "foundation/Text.h"
#include "shared/base/Ascii.h"
#include "shared/base/Base64.h"
#include "shared/base/Utf8.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace morvex {

namespace {

/// The parts of `=?charset?form?text?=`.
struct EncodedWord {
    char form = 'B'; ///< B or Q
    std::string_view text;
    std::size_t end = 0; ///< behind the word
};

std::optional<EncodedWord> encodedWordAt(std::string_view field, std::size_t begin) {
    const auto form = field.find('?', begin + 2) + 1;
    if (form == 0 || form == begin + 3 || form + 1 >= field.size() || field[form + 1] != '?')
        return std::nullopt;
    const auto text = form + 2;
    const auto end = field.find('?', text);
    if (end == std::string_view::npos || !field.substr(end).starts_with("?=")) return std::nullopt;
    const EncodedWord word{static_cast<char>(asciiLower(field[form])), field.substr(text, end - text),
                           end + 2};
    return word.form == 'b' || word.form == 'q' ? std::optional(word) : std::nullopt;
}

/// The text of an encoded word, or nothing if it cannot be decoded.
std::optional<std::string> decodedWord(const EncodedWord& word) {
    if (word.form == 'b') {
        const auto bytes = base64Decode(word.text);
        return bytes ? std::optional(repairUtf8(asText(*bytes))) : std::nullopt;
    }
    std::string text(word.text);
    std::ranges::replace(text, '_', ' ');
    return repairUtf8(quotedPrintableBytes(text));
}

/// What has been read of a message so far.
struct Draft {
    std::optional<std::string> from;
    std::optional<std::string> subject;
    std::string date;
    bool read = false;
};

bool isWordCharacter(char character) {
    return isAsciiLetterOrDigit(character) || character == '_';
}

/// The number behind the word UID.
std::optional<std::uint32_t> uidIn(std::string_view line) {
    constexpr std::string_view name = "UID";
    for (auto at = line.find(name); at != std::string_view::npos; at = line.find(name, at + 1)) {
        const auto rest = line.substr(at + name.size());
        const auto digits = rest.substr(std::min(rest.find_first_not_of(" \t"), rest.size()));
        const bool isName = (at == 0 || !isWordCharacter(line[at - 1])) && digits.size() < rest.size();
        if (!isName || digits.empty() || digits[0] < '0' || digits[0] > '9') continue;
        std::uint32_t uid = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), uid);
        return error == std::errc() ? std::optional(uid) : std::nullopt;
    }
    return std::nullopt;
}

std::optional<std::string> fieldIn(std::string_view line, std::string_view name) {
    if (!equalsIgnoringCase(line.substr(0, name.size()), name)) return std::nullopt;
    return decodedHeader(trim(repairUtf8(line.substr(name.size()))));
}

void addField(Draft& draft, std::string_view line) {
    if (auto from = fieldIn(line, "From:")) draft.from = std::move(from);
    if (auto subject = fieldIn(line, "Subject:")) draft.subject = std::move(subject);
    if (auto date = fieldIn(line, "Date:")) draft.date = *std::move(date);
}

} // namespace

std::string decodedHeader(std::string_view field) {
    std::string text;
    std::size_t taken = 0;
    for (auto begin = field.find("=?"); begin != std::string_view::npos;) {
        const auto word = encodedWordAt(field, begin);
        if (word) {
            const auto decoded = decodedWord(*word);
            text += field.substr(taken, begin - taken);
            text += decoded ? *decoded : field.substr(begin, word->end - begin);
            taken = word->end;
        }
        begin = field.find("=?", word ? word->end : begin + 1);
    }
    text += field.substr(taken);
    return text;
}

std::vector<MacIMAPMessage> fetchedMessages(std::string_view lines, std::vector<std::uint32_t> asked) {
    std::ranges::sort(asked);
    std::map<std::uint32_t, Draft, std::greater<>> drafts;
    Draft* draft = nullptr;
    ReplyLines reply(lines);
    while (const auto line = reply.next()) {
        if (line->starts_with('*') && line->contains("FETCH")) {
            const auto uid = uidIn(*line);
            draft = uid && std::ranges::binary_search(asked, *uid) ? &drafts[*uid] : nullptr;
            if (draft) draft->read = line->contains("\\Seen");
        } else if (draft) {
            addField(*draft, *line);
        }
    }
    std::vector<MacIMAPMessage> messages;
    messages.reserve(drafts.size());
    for (auto& [uid, known] : drafts)
        messages.push_back({.uid = uid,
                            .from = std::move(known.from).value_or("(neznámý odesílatel)"),
                            .subject = std::move(known.subject).value_or("(bez předmětu)"),
                            .date = std::move(known.date),
                            .read = known.read});
    return messages;
}

} // namespace morvex

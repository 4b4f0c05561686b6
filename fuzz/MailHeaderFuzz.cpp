#include "app/mail/protocol/MailHeader.h"
#include "shared/base/Require.h"
#include "shared/base/Utf8.h"

#include <cstdint>
#include <regex>
#include <string>

namespace {

using namespace morvex;

/// The field with each word decoded alone, where a regular expression finds it.
std::string decodedWordByWord(const std::string& field) {
    static const std::regex word(R"(=\?([^?]+)\?([bBqQ])\?([^?]*)\?=)");
    std::string text;
    auto rest = field.begin();
    for (std::sregex_iterator match(field.begin(), field.end(), word); match != std::sregex_iterator();
         ++match) {
        text.append(rest, (*match)[0].first);
        text += decodedHeader(match->str());
        rest = (*match)[0].second;
    }
    return text.append(rest, field.end());
}

} // namespace

/// Headers as an IMAP server tells them, and one field of them.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    require(decodedHeader(text) == decodedWordByWord(text), "other words are decoded than there are");
    if (isValidUtf8(text)) require(isValidUtf8(decodedHeader(text)), "a decoded field is no text");
    std::uint32_t last = 4;
    for (const auto& message : fetchedMessages("* 1 FETCH (UID 2)\n" + text, {3, 1, 2})) {
        require(message.uid < last, "messages are listed twice or in another order");
        last = message.uid;
        for (const auto* field : {&message.from, &message.subject, &message.date})
            require(isValidUtf8(*field), "a field of a message is no text");
    }
    require(last < 4, "a message is missing");
    return 0;
}

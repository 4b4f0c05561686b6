#include "app/ui/Localized.h"

#include <QCoreApplication>

#include <algorithm>
#include <limits>
#include <string>

namespace morvex {

namespace {

/// Bytes. What agents, phones and relays wrote may be far longer, and is in no table.
constexpr std::size_t longestSentence = 2'000;

std::string formOf(std::string_view czech, std::int64_t number) {
    std::string key(czech);
    // The toolkit reads up to the first zero byte.
    if (key.size() > longestSentence || key.contains('\0')) return key;
    const auto most = std::int64_t{std::numeric_limits<int>::max()};
    const auto count = static_cast<int>(std::min(number, most));
    return QCoreApplication::translate("Morvex", key.c_str(), nullptr, count).toStdString();
}

} // namespace

QString localized(const Sentence& sentence) {
    static const Sentence::Forms forms = formOf;
    return QString::fromStdString(sentence.in(forms));
}

} // namespace morvex

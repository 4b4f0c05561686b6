#include "app/ui/Localized.h"

#include <QCoreApplication>

#include <algorithm>
#include <limits>
#include <string>

namespace morvex {

namespace {

/// In bytes. Texts from agents, phones and relays may be far longer, but no table contains them.
constexpr std::size_t longestSentence = 2'000;

std::string formOf(std::string_view czech, std::int64_t number) {
    std::string key(czech);
    // Qt reads the key only up to the first zero byte.
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

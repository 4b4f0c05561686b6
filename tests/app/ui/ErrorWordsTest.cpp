#include "app/agents/AgentChyba.h"
#include "app/customapps/ServiceError.h"
#include "app/execution/WideFolder.h"
#include "app/keychain/KeychainError.h"
#include "app/ui/LanguageTable.h"
#include "app/ui/Localized.h"
#include "foundation/OneShot.h"
#include "platform/ports/UserDefaults.h"
#include "shared-apple/KeychainChyba.h"
#include "shared-apple/MessageTooLong.h"
#include "shared-apple/RelayAddress.h"
#include "shared/base/SystemTrouble.h"
#include "shared/trust/CryptoError.h"
#include "shared/trust/SecureChannel.h"
#include "shared/wire/DecodeError.h"
#include "shared/wire/Envelope.h"
#include "shared/wire/PublicKeys.h"
#include "shared/wire/TalkSpanError.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

#include <string_view>
#include <utility>
#include <vector>

namespace morvex {
namespace {

/// Stands in any field of an error.
struct Sample {
    static constexpr const char* text = "codex";

    operator std::string() const { return text; }

    operator Sentence() const { return Sentence(text); }

    operator int() const { return 5; }

    operator std::int64_t() const { return 5; }

    operator std::size_t() const { return 5; }

    operator double() const { return 5; }
};

template <class Record, class... Samples> Record filled(Samples... samples) {
    if constexpr (requires { Record{samples..., Sample()}; })
        return filled<Record>(samples..., Sample());
    else
        return Record{samples...};
}

/// The words of every case of an error that is one of several records.
template <class Failure, class... Cases> std::vector<Sentence> wordsOf(std::variant<Cases...> Failure::*) {
    return {Failure{filled<Cases>()}.popis()...};
}

template <class Enumeration, Enumeration value> constexpr bool isNamed() {
    // "… [Enumeration = …, value = …::name]" for an enumerator, "… value = (…)5]" for another number.
    constexpr std::string_view signature = __PRETTY_FUNCTION__;
    return signature[signature.rfind("value = ") + 8] != '(';
}

/// The words of every enumerator of an error that has such a reason.
template <class Enumeration, int at = 0> std::vector<Sentence> wordsOfEach(auto failureOf) {
    constexpr auto reason = static_cast<Enumeration>(at);
    if constexpr (isNamed<Enumeration, reason>()) {
        auto words = wordsOfEach<Enumeration, at + 1>(failureOf);
        words.push_back(failureOf(reason).popis());
        return words;
    }
    return {};
}

struct Words {
    const char* header; ///< of the error
    std::vector<Sentence> sentences;
};

const std::vector<Words>& everyError() {
    using Channel = SecureChannel::Chyba;
    const auto whole = [](DecodeError::Reason reason) { return DecodeError{reason, "", Sentence("5")}; };
    const auto field = [](DecodeError::Reason reason) {
        return DecodeError{reason, "a.b[1]", Sentence("5")};
    };
    static const std::vector<Words> errors{
        {"app/agents/AgentChyba.h", wordsOf(&AgentChyba::kind)},
        {"app/customapps/ServiceError.h", wordsOf(&ServiceError::value)},
        {"app/execution/WideFolder.h",
         wordsOfEach<WideFolder::Reach>([](WideFolder::Reach reach) { return WideFolder{"", reach}; })},
        {"app/keychain/KeychainError.h", {filled<KeychainError>().popis()}},
        {"foundation/OneShot.h", {Abandoned{}.popis()}},
        {"shared/base/SystemError.h",
         wordsOfEach<SystemTrouble>([](SystemTrouble trouble) { return TextError{popis(trouble)}; })},
        {"platform/ports/UserDefaults.h", {ChangedMeanwhile{}.popis()}},
        {"shared-apple/KeychainChyba.h",
         {KeychainChyba{5, KeychainChyba::Pokus::reading, "identita", {}}.popis(),
          KeychainChyba{5, KeychainChyba::Pokus::writing, "identita", {}}.popis(),
          KeychainChyba{5, KeychainChyba::Pokus::erasing, "identita", {}}.popis()}},
        {"shared-apple/MessageTooLong.h", {MessageTooLong{}.popis()}},
        {"shared-apple/RelayAddress.h",
         {RelayAddressRefused{}.popis(), RelayAddressRefused{Sample::text}.popis()}},
        {"shared/trust/CryptoError.h",
         wordsOfEach<CryptoFailure>([](CryptoFailure failure) { return CryptoError{failure}; })},
        {"shared/trust/SecureChannel.h", wordsOfEach<Channel::Duvod>([](Channel::Duvod duvod) {
             return Channel{duvod, Sentence(Sample::text)};
         })},
        {"shared/wire/DecodeError.h", wordsOfEach<DecodeError::Reason>(whole)},
        {"shared/wire/DecodeError.h", wordsOfEach<DecodeError::Reason>(field)},
        {"shared/wire/Envelope.h", {AmbiguousIdentity{}.popis()}},
        {"shared/wire/PublicKeys.h", wordsOf(&KryptoChyba::value)},
        {"shared/wire/TalkSpanError.h", wordsOf(&TalkSpanError::value)},
    };
    return errors;
}

class ErrorWordsTest : public testing::Test {
  protected:
    ErrorWordsTest() { QCoreApplication::installTranslator(&table_); }

    ~ErrorWordsTest() override { QCoreApplication::removeTranslator(&table_); }

    LanguageTable table_;
};

TEST_F(ErrorWordsTest, EveryCaseOfEveryErrorIsToldInEveryLanguage) {
    const auto mayStay = [](const std::string& words, const QString& language) {
        return words == Sample::text ||
               (language == QStringLiteral("en") && words.starts_with("Keychain error"));
    };
    for (const auto& code :
         {QStringLiteral("en"), QStringLiteral("de"), QStringLiteral("fr"), QStringLiteral("es")}) {
        table_.take(code);
        for (const auto& [header, sentences] : everyError())
            for (const auto& sentence : sentences) {
                const auto words = sentence.czech();
                const auto found = localized(sentence).toStdString();
                EXPECT_TRUE(mayStay(words, code) || found != words)
                    << code.toStdString() << ", " << header << ": " << words;
            }
    }
}

} // namespace
} // namespace morvex

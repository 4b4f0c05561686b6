#include "app/mail/bridge/ScriptRun.h"

#include <boost/json/object.hpp>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace morvex {
namespace {

using scriptRun::End;

std::string told(std::string_view errors, End end = End::byItself) {
    return scriptRun::failure(errors, end).popis().czech();
}

constexpr auto notAllowed =
    "macOS nepovolil ovládání aplikace Mail. Otevři Nastavení systému → Soukromí a zabezpečení → "
    "Automatizace a povol tam Morvex přístup k Mailu.";
constexpr auto unsupported = "Apple Mail neposkytl podporované automatizační rozhraní.";
constexpr auto refused = "Mail operaci odmítl.";
constexpr auto unreadable = "Mail vrátil něco, čemu nerozumím.";

TEST(ScriptRun, EachStandardErrorHasItsSentence) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"execution error: Error: Účet neznám. (-2700)", "Error: Účet neznám."},
        {"execution error: Error: Účet neznám. (-2700)\n", "Error: Účet neznám."},
        {"osascript: warning\nexecution error: Error: Účet neznám. (-2700)\nlast words",
         "Error: Účet neznám."},
        {"Error: the first\nError: the second", "Error: the second"},
        {"Error: words\nlast words", "Error: words"},
        {"  \tError: indented  \n", "Error: indented"},
        {"one\ntwo\n\n  \n", "two"},
        {"0:60: execution error: Error: Error: text (-2700)", "0:60: Error: Error: text"},
        {"execution error: a execution error: b", "a b"},
        {"execution error: with (a bracket) (-2700)", "with (a bracket)"},
        {"execution error: two (-1) (-2)", "two (-1)"},
        {"execution error: positive (2700)", "positive (2700)"},
        {"execution error: no digits (-)", "no digits (-)"},
        {"execution error: letters (-27x)", "letters (-27x)"},
        {"execution error: number (-2700) inside", "number (-2700) inside"},
        {"execution error: open (-2700", "open (-2700"},
        {"execution error: (-2700)", refused},
        {"execution error:  ", "execution error:"},
        {"", refused},
        {" \n\t\n", refused},
        {"(-128)", refused},
        {"execution error: Not authorized to send Apple events to Mail. (-1743)", notAllowed},
        {"x (-1743)", notAllowed},
        {"NOT AUTHORIZED", notAllowed},
        {"An operation is Not Allowed here", notAllowed},
        {"not allowed\nmessage not understood", notAllowed},
        {"-1743 stands in an earlier line\nError: other words", notAllowed},
        {"execution error: Error: Message not understood. (-1708)", unsupported},
        {"Mail got an error: it doesn't understand the \"count\" message", unsupported},
        {"MESSAGE NOT UNDERSTOOD\nError: other words", unsupported},
    };
    for (const auto& [errors, sentence] : rows) EXPECT_EQ(told(errors), sentence) << errors;
}

TEST(ScriptRun, ATimeLimitOutranksWhatWasWritten) {
    for (const auto* errors : {"", "execution error: x (-1743)", "Message not understood", "Error: words"})
        EXPECT_EQ(told(errors, End::atTimeLimit), "Mail neodpověděl včas. Zkus menší počet zpráv.");
}

TEST(ScriptRun, AProgramIsTheParametersTheBodyAndTheResult) {
    EXPECT_EQ(scriptRun::program("return 1;", {{"a", "b\"\n"}, {"c", {1, true, nullptr}}}),
              "const PARAMS = {\"a\":\"b\\\"\\n\",\"c\":[1,true,null]};\n"
              "function main() {\n"
              "return 1;\n"
              "}\n"
              "JSON.stringify(main() ?? null);");
}

TEST(ScriptRun, AParameterThatIsNotUtf8IsRepaired) {
    EXPECT_TRUE(scriptRun::program("", {{"a", "\xFF"}}).starts_with("const PARAMS = {\"a\":\"\uFFFD\"};"));
}

template <class T> std::string refusal(std::string_view output) {
    const auto result = scriptRun::result<T>(output);
    return result ? "" : result.error().popis().czech();
}

TEST(ScriptRun, AResultMayBeAnyJsonWithWhiteSpaceAroundIt) {
    EXPECT_EQ(scriptRun::result<std::string>(" \r\n\t\"a\" \n\n"), "a");
    EXPECT_EQ(scriptRun::result<std::vector<std::string>>("[\"a\",\"\"]\n"),
              (std::vector<std::string>{"a", ""}));
    EXPECT_EQ(scriptRun::result<std::vector<MailZprava>>("[]"), std::vector<MailZprava>{});
}

TEST(ScriptRun, WhatIsNoResultIsNotUnderstood) {
    for (const auto* output :
         {"", " ", "null", "5", "true", "{}", "nonsense", "\"a", "\"a\" \"b\"", "[1]", "[null]"}) {
        EXPECT_EQ(refusal<std::string>(output), unreadable) << output;
        EXPECT_EQ(refusal<std::vector<std::string>>(output), unreadable) << output;
        EXPECT_EQ(refusal<std::vector<MailZprava>>(output), unreadable) << output;
    }
    EXPECT_EQ(refusal<std::string>("[]"), unreadable);
    EXPECT_EQ(refusal<std::vector<std::string>>("\"a\""), unreadable);
}

TEST(ScriptRun, MissingFieldsOfAMessageHaveTheirDefaults) {
    const std::vector<MailZprava> expected{{.predmet = "(bez předmětu)", .precteno = true}};
    for (const auto* output : {"[{}]", "[{\"id\":null,\"ucet\":null,\"predmet\":null,\"precteno\":null}]",
                               "[{\"predmet\":\"\"}]", "[{\"neznamy\":1}]"})
        EXPECT_EQ(scriptRun::result<std::vector<MailZprava>>(output), expected) << output;
}

TEST(ScriptRun, EachFieldOfAMessageIsRead) {
    EXPECT_EQ(
        scriptRun::result<std::vector<MailZprava>>(
            R"([{"id":"1","ucet":"2","slozka":"3","od":"4","predmet":"5","datum":"6","precteno":false,"ukazka":"7"}])"),
        (std::vector<MailZprava>{{"1", "2", "3", "4", "5", "6", false, "7"}}));
}

TEST(ScriptRun, AFieldOfAnotherTypeSpoilsTheMessage) {
    for (const std::string name : {"id", "ucet", "slozka", "od", "predmet", "datum", "ukazka"})
        EXPECT_EQ(refusal<std::vector<MailZprava>>("[{\"" + name + "\":1}]"), unreadable) << name;
    EXPECT_EQ(refusal<std::vector<MailZprava>>(R"([{"precteno":"true"}])"), unreadable);
}

TEST(ScriptRun, HalfASurrogatePairDoesNotSpoilTheResult) {
    EXPECT_EQ(scriptRun::result<std::string>(R"("a\ud83d")"), "a\uFFFD");
}

} // namespace
} // namespace morvex

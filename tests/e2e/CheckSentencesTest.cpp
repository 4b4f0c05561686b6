#include "tests/support/Program.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace morvex {
namespace {

/// The build tool that compares the sentences in sources with the translation tables.
class CheckSentencesTest : public testing::Test {
  protected:
    Ended check(const std::string& source, const std::string& messages) {
        write("source.cpp", source);
        write("en.ts", "<TS><context><name>Morvex</name>" + messages + "</context></TS>");
        return runProgram("check-sentences", {folder_.path().string(), (folder_.path() / "en.ts").string()},
                          {}, "source.cpp\n");
    }

    static std::string message(const std::string& source, const std::string& translation) {
        return "<message><source>" + source + "</source><translation>" + translation +
               "</translation></message>";
    }

  private:
    void write(const char* name, const std::string& text) const {
        std::ofstream(folder_.path() / name) << text;
    }

    TemporaryFolder folder_;
};

TEST_F(CheckSentencesTest, SentencesThatEveryTableHasPass) {
    const std::string source = R"(
        // "In a comment."_sentence, Sentence("Česky")
        tell("Jedna."_sentence, "plain", '"', "Dvě {a}"
             " a {b}."_sentence(a, b), qsTr("Tři %1"), tr("\"Čtyři\""), "{a} · {b}"_sentence(a, b));)";
    const auto ended =
        check(source, message("Jedna.", "One.") + message("Dvě {a} a {b}.", "{b} and {a}, that is two.") +
                          message("Tři %1", "Three %1") + message("\"Čtyři\"", "“Four”"));
    EXPECT_EQ(ended.code, 0) << ended.output;
    EXPECT_EQ(ended.output, "");
}

TEST_F(CheckSentencesTest, EachWayToBeWrongIsToldAndFails) {
    const auto one = message("Jedna {a}.", "One {a}.");
    const std::string unfinished = "<message><source>Jedna {a}.</source><translation type=\"unfinished\">One "
                                   "{a}.</translation></message>";
    const std::string forms =
        "<message numerus=\"yes\"><source>Jedna {a}.</source><translation><numerusform>{a} "
        "one</numerusform><numerusform>ones</numerusform></translation></message>";

    struct Row {
        std::string source;
        std::string messages;
        std::string words;
    };

    const std::string told = "\"Jedna {a}.\"_sentence(a)";
    const Row rows[] = {
        {told, "", "en.ts: is missing: Jedna {a}.\n"},
        {"", one, "en.ts: nobody tells this: Jedna {a}.\n"},
        {told, message("Jedna {a}.", " "), "en.ts: is not translated: Jedna {a}.\n"},
        {told, unfinished, "en.ts: is not translated: Jedna {a}.\n"},
        {told, message("Jedna {a}.", "One {b}."), "en.ts: has other places: One {b}.\n"},
        {told, message("Jedna {a}.", "One."), "en.ts: has other places: One.\n"},
        {told, forms, "en.ts: has other places: ones\n"},
        {told, one + "</context><context><name>Other</name>", "en.ts: nobody asks in this context: Other\n"},
        {told, one + one, "en.ts: stands twice: Jedna {a}.\n"},
        {told + " fail(TextError{\"Něco \"\n\"chybí.\"})", one,
         "source.cpp: is in no language but Czech: Něco chybí.\n"},
        {told + " Sentence(\"Něco \" + name)", one, "source.cpp: is in no language but Czech: Něco \n"},
    };
    for (const auto& [source, messages, words] : rows) {
        const auto ended = check(source, messages);
        EXPECT_EQ(ended.code, 1) << words;
        EXPECT_NE(ended.output.find(words), std::string::npos) << ended.output;
    }
}

TEST_F(CheckSentencesTest, WhatCannotBeReadFails) {
    const auto ended = check("", "<message>");
    EXPECT_EQ(ended.code, 2) << ended.output;
    EXPECT_EQ(runProgram("check-sentences", {}, {}).code, 2);
}

} // namespace
} // namespace morvex

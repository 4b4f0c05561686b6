#include "phone/ResultText.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

std::string shown(const std::string& json) {
    std::string text;
    for (const auto& line : resultLines(json)) {
        for (const auto& span : line) text += span.text;
        text += "\n";
    }
    return text;
}

TEST(ResultText, ReadsAsLinesOfKeysAndValues) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {R"({"written":"a.txt","count":2,"sent":true,"ratio":0.5,"none":null})",
         "written: a.txt\ncount: 2\nsent: ano\nratio: 0.5\nnone: —\n"},
        {R"({"files":["a.txt","b.txt"]})", "files:\n  - a.txt\n  - b.txt\n"},
        {R"({"files":[],"more":{}})", "files: nic\nmore: nic\n"},
        {R"({"notes":[{"title":"A","body":"x"},{"title":"B","body":"y"}]})",
         "notes:\n  - title: A\n    body: x\n  - title: B\n    body: y\n"},
        {R"({"content":"první\ndruhý\n"})", "content:\n  první\n  druhý\n"},
        {R"({"list":["a\nb"]})", "list:\n  - a\n    b\n"},
        {R"({"list":[["a","b"]]})", "list:\n  - - a\n    - b\n"},
        {R"({"text":"\n"})", "text:\n  \n"},
        {R"({"error":"Chybí cesta."})", ""},
        {R"({"error":"Ne.","sent":false})", "sent: ne\n"},
        {R"("jen text")", "jen text\n"},
        {"{}", ""},
        {"žádný JSON", "žádný JSON\n"},
    };
    for (const auto& [json, text] : rows) EXPECT_EQ(shown(json), text) << json;
}

TEST(ResultText, JsonIsOneLineOfJsonWhateverCame) {
    EXPECT_EQ(resultJson("{ \"a\": 1,\n \"b\": [] }"), R"({"a":1,"b":[]})");
    EXPECT_EQ(resultJson("oops\n"), R"("oops\n")");
}

TEST(ResultText, TheSentenceOfARefusalIsTheTextUnderError) {
    EXPECT_EQ(errorSentence(R"({"error":"Chybí cesta."})"), "Chybí cesta.");
    EXPECT_EQ(errorSentence(R"({"error":3})"), "");
    EXPECT_EQ(errorSentence(R"({"exit_code":3})"), "");
    EXPECT_EQ(errorSentence("[]"), "");
    EXPECT_EQ(errorSentence("{"), "");
}

} // namespace
} // namespace morvex

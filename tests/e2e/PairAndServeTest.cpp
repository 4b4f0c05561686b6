#include "shared/wire/Json.h"
#include "tests/e2e/EndToEnd.h"

#include <csignal>
#include <fstream>
#include <sstream>

namespace morvex {
namespace {

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

std::string contentOf(const std::string& path) {
    std::stringstream content;
    content << std::ifstream(path).rdbuf();
    return content.str();
}

TEST_F(EndToEnd, AFreshPhonePairsAndUsesFilesOfAnAllowedFolder) {
    auto mac = startMac();
    pair(*mac);
    auto folder = allow(*mac, "Ukázka");
    std::ofstream(folder + "/nákup.txt") << "mléko";

    auto status = phone({"--json", "status"});
    EXPECT_EQ(status.code, 0) << status.output;
    EXPECT_TRUE(contains(status.output, R"("allowedFolders":["Ukázka"])")) << status.output;
    auto tools = phone({"tools"});
    for (const char* name :
         {"mac.status", "mac.files.search", "mac.files.read", "mac.files.write", "mac.terminal.run"})
        EXPECT_TRUE(contains(tools.output, name)) << tools.output;

    auto found = phone({"--json", "call", "mac.files.search", R"({"pattern":"nák"})"});
    EXPECT_EQ(found.code, 0) << found.output;
    EXPECT_TRUE(contains(found.output, "nákup.txt")) << found.output;
    auto read = phone({"call", "mac.files.read", R"({"path":"nákup.txt"})"});
    EXPECT_EQ(read.code, 0);
    EXPECT_TRUE(contains(read.output, "mléko")) << read.output;
    auto written = phone({"call", "mac.files.write", R"({"path":"nové/a.txt","content":"řádek"})"});
    EXPECT_EQ(written.code, 0) << written.output;
    EXPECT_EQ(contentOf(folder + "/nové/a.txt"), "řádek");

    auto listed = phone({"call", "mac.terminal.run", R"({"program":"ls","args":["nové"]})"});
    EXPECT_EQ(listed.code, 0) << listed.output;
    EXPECT_TRUE(contains(listed.output, "a.txt")) << listed.output;
    auto changing = phone({"call", "mac.terminal.run", R"({"program":"git","args":["push"]})"});
    EXPECT_EQ(changing.code, 1);
    EXPECT_TRUE(contains(changing.output, "git push vyžaduje tvoje potvrzení.")) << changing.output;

    auto outside = phone({"call", "mac.files.read", R"({"path":"../../../../../../etc/hosts"})"});
    EXPECT_EQ(outside.code, 1);
    EXPECT_TRUE(contains(outside.output, "Cesta hosts leží mimo povolené složky. Nesahám na ni."))
        << outside.output;
    auto unknown = phone({"call", "mac.web.search", R"({"query":"x"})"});
    EXPECT_EQ(unknown.code, 1);
    EXPECT_TRUE(contains(unknown.output, "Nástroj mac.web.search tenhle Mac nemá.")) << unknown.output;
}

TEST_F(EndToEnd, CommandsThatLookRunInAnAllowedFolderWithBothOutputsAndTheirStatus) {
    auto mac = startMac();
    pair(*mac);
    auto folder = allow(*mac, "Ukázka");
    std::ofstream(folder + "/script.py")
        << "import sys\nprint('ven')\nprint('chyba', file=sys.stderr)\nsys.exit(3)\n";
    auto run = [this](const std::string& program, const std::string& args) {
        return phone({"--json", "call", "mac.terminal.run",
                      R"({"program":")" + program + R"(","args":[)" + args + "]}"});
    };
    auto script = run("python3", R"("script.py")");
    EXPECT_EQ(script.code, 1) << script.output;
    EXPECT_TRUE(contains(script.output, R"("exit_code":3)")) << script.output;
    EXPECT_TRUE(contains(script.output, R"("output":"ven\n")")) << script.output;
    EXPECT_TRUE(contains(script.output, R"("stderr":"chyba\n")")) << script.output;

    auto found = run("grep", R"("-n","ven",".","-r")");
    EXPECT_EQ(found.code, 0) << found.output;
    EXPECT_TRUE(contains(found.output, "script.py:2:print('ven')")) << found.output;
    auto status = run("git", R"("status")");
    EXPECT_TRUE(contains(status.output, R"("exit_code":128)")) << status.output;
    EXPECT_TRUE(contains(status.output, "not a git repository")) << status.output;
}

TEST_F(EndToEnd, ThePromptTakesAScriptOfLines) {
    auto mac = startMac();
    pair(*mac);
    auto folder = allow(*mac, "Ukázka");
    auto ended = phone({"shell"}, "write a.txt první řádek\nread a.txt\nsearch a.t\nquit");
    EXPECT_EQ(ended.code, 0) << ended.output;
    EXPECT_EQ(contentOf(folder + "/a.txt"), "první řádek");
    EXPECT_TRUE(contains(ended.output, "první řádek")) << ended.output;
    EXPECT_TRUE(contains(ended.output, "files:\n  - a.txt\n")) << "what was searched for: " << ended.output;
}

TEST_F(EndToEnd, EverythingSurvivesARestartOfEachSide) {
    auto mac = startMac();
    pair(*mac);
    allow(*mac, "Ukázka");
    mac->signal(SIGTERM);
    EXPECT_EQ(mac->wait(), 0) << mac->output();
    restartRelay();
    mac = startMac();
    auto status = phone({"--json", "status"});
    EXPECT_EQ(status.code, 0) << status.output;
    EXPECT_TRUE(contains(status.output, R"("allowedFolders":["Ukázka"])")) << status.output;
}

TEST_F(EndToEnd, TheCompanionComesBackAfterTheRelayWasAway) {
    auto mac = startMac();
    pair(*mac);
    mac->waitForLine("Stav: ");
    restartRelay();
    auto status = phone({"status"});
    EXPECT_EQ(status.code, 0) << status.output << mac->output();
}

TEST_F(EndToEnd, ANumberThatDiffersKeepsNothingOnThisComputer) {
    auto mac = startMac();
    mac->type("parovat");
    auto code = mac->waitForNextLine("{\"agreementKey\"");
    auto refused = phone({"pair", code}, "n");
    EXPECT_EQ(refused.code, 6) << refused.output;
    EXPECT_EQ(phone({"status"}).code, 3);
    mac->waitForNextLine("Číslo k porovnání: ");
    mac->type("neshoduje");
    mac->waitForNextLine("Čísla se neshodovala.");
    EXPECT_FALSE(std::filesystem::exists(peerFile()));
    pair(*mac);
    EXPECT_TRUE(std::filesystem::exists(peerFile()));
}

TEST_F(EndToEnd, EitherSideMayEndThePairing) {
    auto mac = startMac();
    pair(*mac);
    mac->waitForLine("Stav: ");
    auto ended = phone({"unpair"});
    EXPECT_EQ(ended.code, 0) << ended.output;
    mac->waitForLine("Zařízení bylo odvoláno.");

    pair(*mac);
    EXPECT_EQ(phone({"status"}).code, 0);
    mac->type("odpojit");
    mac->waitForNextLine("Stav: Nespárováno");
    EXPECT_NE(phone({"--timeout", "5", "status"}).code, 0);
}

TEST_F(EndToEnd, ASecondStartOnTheSameDataEndsAndAnotherHomeDoesNotMeetIt) {
    auto mac = startMac();
    auto second = runProgram("morvex", {}, environment("mac"));
    EXPECT_EQ(second.code, 1);
    EXPECT_TRUE(contains(second.output, "Morvex už nad těmito daty běží.")) << second.output;
    auto other = startMac("jiný");
    other->type("konec");
    EXPECT_EQ(other->wait(), 0);
}

/// With a vault and settings prepared in advance, and with neither display nor bus, the companion connects
/// and serves.
TEST_F(EndToEnd, ServesThePeerThatItFindsInItsVault) {
    {
        auto first = startMac("předtím");
        pair(*first);
        first->type("konec");
        EXPECT_EQ(first->wait(), 0);
    }
    auto folder = temporary.path() / "mac" / "Povolená";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "a.txt") << "nalezeno";

    auto from = temporary.path() / "předtím/.local/share/Morvex/vault";
    auto into = temporary.path() / "mac/.local/share/Morvex/vault";
    std::filesystem::create_directories(into);
    std::filesystem::copy(from, into, std::filesystem::copy_options::recursive);
    auto settings = temporary.path() / "mac/.config/Morvex/defaults.json";
    std::filesystem::create_directories(settings.parent_path());
    std::ofstream(settings) << encode(
        boost::json::object{{"slozky.povolene", boost::json::array{folder.string()}}});

    Program mac("morvex", {}, environment("mac"));
    mac.closeInput();
    auto read = phone({"call", "mac.files.read", R"({"path":"a.txt"})"});
    EXPECT_EQ(read.code, 0) << read.output << mac.output();
    EXPECT_TRUE(contains(read.output, "nalezeno")) << read.output;
}

TEST_F(EndToEnd, ProgramsExplainThemselves) {
    for (const char* name : {"morvex", "morvex-relay", "morvex-phone"}) {
        auto help = runProgram(name, {"--help"}, environment("mac"));
        EXPECT_EQ(help.code, 0) << name;
        EXPECT_TRUE(contains(help.output, name)) << help.output;
        auto wrong = runProgram(name, {"--nesmysl"}, environment("mac"));
        EXPECT_EQ(wrong.code, 2) << name << wrong.output;
        EXPECT_EQ(runProgram(name, {"--version"}, environment("mac")).code, 0) << name;
    }
}

} // namespace
} // namespace morvex

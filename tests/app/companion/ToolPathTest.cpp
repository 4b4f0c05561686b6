#include "shared/wire/Json.h"
#include "tests/support/CompanionHarness.h"

#include <filesystem>
#include <fstream>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using ToolPathTest = CompanionHarness;

std::string errorOf(const std::string& sentence) {
    return encode(boost::json::object{{"error", sentence}});
}

std::vector<std::string> namesOf(const std::vector<ToolDescriptor>& tools) {
    std::vector<std::string> names;
    for (const auto& tool : tools) names.push_back(tool.name);
    return names;
}

TEST_F(ToolPathTest, TheStatusToolTellsWhatThisComputerIs) {
    startSecured();
    allowFolder("Ukázka");
    auto answer = call("mac.status", "{}");
    EXPECT_TRUE(answer.ok);
    EXPECT_EQ(answer.requestID, "req-1");
    auto result = parseJson(answer.json).value().as_object();
    EXPECT_EQ(result["device"], "Počítač");
    EXPECT_EQ(result["app_version"], "1.2.3 (4)");
    EXPECT_EQ(result["busy"], "");
    EXPECT_EQ(result["folders"], (boost::json::array{"Ukázka"}));
    EXPECT_EQ(
        result["tools"],
        (boost::json::array{"mac.status", "mac.notes.search", "mac.notes.create", "mac.notes.update",
                            "mac.notes.delete", "mac.reminders.list", "mac.reminders.create",
                            "mac.reminders.complete", "mac.contacts.find", "mac.agent.rename",
                            "mac.files.search", "mac.files.read", "mac.files.write", "mac.terminal.run"}));
    EXPECT_EQ(result.size(), 7U);
}

TEST_F(ToolPathTest, TheStatusToolTellsAnAgentsVersionBeforeItsProblem) {
    startSecured();
    const auto agents = [this] {
        auto result = parseJson(call("mac.status", "{}").json).value().as_object();
        return encode(boost::json::value(boost::json::array{result["claude"], result["codex"]}));
    };
    features->agents.stav().claude = AgentStatus{true, "2.0.1", "/usr/bin/claude", Sentence("Nepřihlášeno.")};
    features->agents.stav().codex = AgentStatus{false, {}, {}, Sentence("Codex tu není.")};
    EXPECT_EQ(agents(), R"(["2.0.1","Codex tu není."])");
    features->agents.stav().claude = AgentStatus{true, {}, {}, {}};
    EXPECT_EQ(agents(), R"(["nenainstalováno","Codex tu není."])");
}

TEST_F(ToolPathTest, ReadsWritesAndSearchesFilesInAnAllowedFolder) {
    startSecured();
    auto folder = allowFolder("Projekty");
    auto written = call("mac.files.write", R"({"path":"nové/poznámka.txt","content":"ahoj"})");
    EXPECT_TRUE(written.ok);
    EXPECT_EQ(written.json, R"({"written":"poznámka.txt"})");
    EXPECT_TRUE(std::filesystem::exists(folder + "/nové/poznámka.txt"));
    auto read = call("mac.files.read", R"({"path":"Projekty/nové/poznámka.txt"})");
    EXPECT_EQ(read.json, R"({"content":"ahoj"})");
    auto found = call("mac.files.search", R"({"pattern":"POZN"})");
    EXPECT_EQ(found.json, R"({"count":1,"files":["nové/poznámka.txt"]})");
    EXPECT_EQ(call("mac.files.search", "{}").json, found.json);
}

TEST_F(ToolPathTest, SentencesOfTheFileTools) {
    startSecured();
    auto folder = allowFolder("Projekty");
    std::ofstream(folder + "/je.txt") << "je";
    const std::vector<std::array<std::string, 3>> rows{
        {"mac.files.read", "{}", "Chybí cesta."},
        {"mac.files.read", R"({"path":5})", "Chybí cesta."},
        {"mac.files.read", R"({"path":"  "})", "Chybí cesta k souboru."},
        {"mac.files.read", R"({"path":"../../etc/hosts"})",
         "Cesta hosts leží mimo povolené složky. Nesahám na ni."},
        {"mac.files.read", R"({"path":"není.txt"})", "není.txt není soubor."},
        {"mac.files.write", R"({"path":"a.txt"})", "Chybí cesta nebo obsah."},
        {"mac.files.write", R"({"path":"a.txt","content":""})", "Chybí cesta nebo obsah."},
        {"mac.files.write", R"({"path":"","content":"x"})", "Chybí cesta nebo obsah."},
        {"mac.files.write", R"({"path":"je.txt","content":"x"})",
         "Soubor je.txt už existuje. Přepsání musíš potvrdit — to zatím neumím."},
        {"mac.files.read", R"({"path":"a.txt","folder":"Jiná"})",
         "Urči povolenou složku. Povolené: Projekty."},
        {"mac.files.search", R"({"folder":"Jiná"})", "Neurčil jsi složku. Povolené: Projekty."},
    };
    for (const auto& [tool, arguments, sentence] : rows) {
        auto answer = call(tool, arguments);
        EXPECT_FALSE(answer.ok) << arguments;
        EXPECT_EQ(answer.json, errorOf(sentence)) << arguments;
    }
}

TEST_F(ToolPathTest, ACommandRunsInAnAllowedFolderAndItsStatusDecides) {
    programs.answer = [](const OutsideProgram& program) {
        return ScriptedPrograms::Answer{.output = program.cwd.value_or(""), .status = program.cwd ? 3 : 0};
    };
    startSecured();
    auto folder = allowFolder("Projekty");
    auto answer = call("mac.terminal.run", R"({"program":"ls"})");
    EXPECT_FALSE(answer.ok);
    EXPECT_EQ(answer.json, encode(boost::json::object{{"exit_code", 3}, {"output", folder}, {"stderr", ""}}));
    EXPECT_EQ(call("mac.terminal.run", "{}").json, errorOf("Chybí program."));
    EXPECT_EQ(call("mac.terminal.run", R"({"program":"rm","args":["-rf","/"]})").json,
              errorOf("Program rm spustit neumím. Povolené jsou jen ty, které nic nemění."));
}

TEST_F(ToolPathTest, BadArgumentsAreNoArguments) {
    startSecured();
    allowFolder("Projekty");
    for (const char* bad : {"[1,2]", "ne", "", "5", "null", "{\"path\":\"a\"", "{} {}"})
        EXPECT_EQ(call("mac.files.read", bad).json, errorOf("Chybí cesta.")) << bad;
    EXPECT_EQ(call("mac.notes.search", "[1,2]").json, R"({"notes":[]})");
}

TEST_F(ToolPathTest, AToolThatIsNotOnOfferEndsInOneSentenceAndInTheTrouble) {
    startSecured();
    allowFolder("Projekty");
    companion->integrations().turnOff(Integration::files);
    auto answer = call("mac.files.read", R"({"path":"a.txt"})");
    EXPECT_FALSE(answer.ok);
    EXPECT_EQ(answer.json, errorOf("Nástroj mac.files.read tenhle Mac nemá."));
    EXPECT_EQ(trouble(), "Byl požadován nástroj mac.files.read, který tento Mac neumí.");
}

TEST_F(ToolPathTest, WithoutAnAllowedFolderNoFileToolIsOffered) {
    startSecured();
    for (const auto other : {Integration::notes, Integration::reminders, Integration::contacts})
        companion->integrations().turnOff(other);
    EXPECT_EQ(namesOf(companion->toolGate().nabizeneNastroje()), std::vector<std::string>{"mac.status"});
    auto folder = allowFolder("Projekty");
    EXPECT_EQ(companion->toolGate().nabizeneNastroje().size(), 6U);
    features->files.slozky().odebrat(folder);
    EXPECT_EQ(companion->toolGate().nabizeneNastroje().size(), 1U);
}

TEST_F(ToolPathTest, ReservedAndUnknownNamesAreRefusedAlike) {
    startSecured();
    for (const char* name : {"mac.terminal.cancel", "mac.app.open", "mac.custom.x", "rm", ""})
        EXPECT_EQ(call(name, "{}").json, errorOf("Nástroj " + std::string(name) + " tenhle Mac nemá."));
}

TEST_F(ToolPathTest, OfALongNameTwoHundredBytesAreSaidBack) {
    startSecured();
    const std::string name = "nástroj" + std::string(192, 'x');
    ASSERT_EQ(name.size(), 200U);
    EXPECT_EQ(call(name, "{}").json, errorOf("Nástroj " + name + " tenhle Mac nemá."));
    EXPECT_EQ(call(name + "y", "{}").json, errorOf("Nástroj " + name + "… tenhle Mac nemá."));
    EXPECT_EQ(trouble(), "Byl požadován nástroj " + name + "…, který tento Mac neumí.");
}

TEST_F(ToolPathTest, CallsOfThePhoneAreAnsweredInTheirOrder) {
    startSecured();
    allowFolder("Projekty");
    phone.call("mac.files.write", R"({"path":"a.txt","content":"1"})", "first");
    phone.call("mac.files.read", R"({"path":"a.txt"})", "second");
    executor.runUntilIdle();
    std::vector<std::string> order;
    for (const auto& received : phone.take())
        if (received.payload.as<MacPayload::ToolResult>()) order.push_back(received.requestID);
    EXPECT_EQ(order, (std::vector<std::string>{"first", "second"}));
}

TEST_F(ToolPathTest, WhileASearchRunsTheLinkLivesAndLaterCallsWait) {
    ManualExecutor slow;
    workers = &slow;
    auto socket = startSecured();
    allowFolder("Projekty");
    phone.call("mac.files.search", "{}", "first");
    phone.call("mac.status", "{}", "second");
    executor.runUntilIdle();
    clock.advance(20s);
    executor.runUntilIdle();
    EXPECT_EQ(socket->pings, 1);
    for (const auto& received : phone.take()) EXPECT_FALSE(received.payload.as<MacPayload::ToolResult>());

    slow.runUntilIdle();
    executor.runUntilIdle();
    std::vector<std::string> order;
    for (const auto& received : phone.take())
        if (received.payload.as<MacPayload::ToolResult>()) order.push_back(received.requestID);
    EXPECT_EQ(order, (std::vector<std::string>{"first", "second"}));
    end();
}

TEST_F(ToolPathTest, MessagesThatChangeNothing) {
    startSecured();
    auto before = companion->stav().potiz.value();
    phone.send({MacPayload::Cancel{}}, "req-1");
    phone.send({MacPayload::ToolProgress{"x"}}, "a");
    phone.send({MacPayload::ToolResult{true, "{}"}}, "b");
    phone.send({MacPayload::NoteAck{{}, 1}}, "c");
    phone.send({MacPayload::SummaryAck{{}, 1}}, "d");
    phone.send({MacPayload::Status{}}, "e");
    phone.send({MacPayload::ApprovalDecision{"unknown", true, "proč"}}, "f");
    phone.send({MacPayload::WorkItemUpdate{}}, "g");
    phone.send({MacPayload::Approval{}}, "h");
    executor.runUntilIdle();
    EXPECT_TRUE(phone.take().empty());
    EXPECT_TRUE(features->agents.historie().polozky().empty());
    EXPECT_FALSE(companion->schvalovani().zadost().value());
    EXPECT_EQ(companion->stav().potiz.value(), before);
    EXPECT_TRUE(call("mac.status", "{}").ok);
}

TEST_F(ToolPathTest, AReplyThatCannotBeSentIsLostAndTheWorkStands) {
    auto socket = startSecured();
    auto folder = allowFolder("Projekty");
    phone.call("mac.files.write", R"({"path":"a.txt","content":"1"})", "lost");
    socket->breakWith("přerušeno");
    executor.runUntilIdle();
    EXPECT_TRUE(std::filesystem::exists(folder + "/a.txt"));
    for (const auto& received : phone.take()) EXPECT_FALSE(received.payload.as<MacPayload::ToolResult>());
}

TEST_F(ToolPathTest, AReplyWhoseSendFailsIsLostWithoutAWord) {
    auto socket = startSecured();
    socket->refusals = 1;
    EXPECT_EQ(call("mac.status", "{}").requestID, "");
    EXPECT_EQ(socket->refusals, 0) << "it was tried";
    EXPECT_TRUE(phone.take().empty()) << "nothing was sent in its place";
    EXPECT_EQ(trouble(), "none");
    EXPECT_TRUE(call("mac.status", "{}").ok);
}

Task<std::string> local(ToolGate& gate, std::string name, boost::json::object arguments) {
    co_return encode(co_await gate.provestMistne(std::move(name), std::move(arguments)));
}

TEST_F(ToolPathTest, TheOwnAssistantReadsWithoutAskingAndLeavesTheTroubleAlone) {
    start();
    allowFolder("Projekty");
    EXPECT_EQ(executor.run(local(companion->toolGate(), "mac.files.read", {})), errorOf("Chybí cesta."));
    EXPECT_EQ(executor.run(local(companion->toolGate(), "mac.web.search", {})),
              errorOf("Nástroj mac.web.search tenhle Mac nemá."));
    EXPECT_EQ(trouble(), "none");
}

TEST_F(ToolPathTest, TheOwnAssistantAsksBeforeEveryChange) {
    start();
    auto folder = allowFolder("Projekty");
    auto& gate = companion->toolGate();
    auto& approvals = companion->schvalovani();
    auto write = [&] { return local(gate, "mac.files.write", {{"path", "a.txt"}, {"content", "1"}}); };

    EXPECT_FALSE(executor.run(write()));
    ASSERT_TRUE(approvals.zadost().value());
    auto request = *approvals.zadost().value();
    EXPECT_EQ(request.tool, "mac.files.write");
    EXPECT_EQ(request.title, "Povolit akci na Macu");
    EXPECT_EQ(request.spoken, "Tato akce změní data na Macu. Potvrď ji v okně Morvex.");
    EXPECT_EQ(request.detail, "mac.files.write\n\n{\n  \"content\" : \"1\",\n  \"path\" : \"a.txt\"\n}");
    EXPECT_EQ(executor.run(write()), errorOf("Akce nebyla potvrzena."))
        << "a second question is refused at once";
    EXPECT_FALSE(std::filesystem::exists(folder + "/a.txt"));
    approvals.rozhodnout(true);
    executor.runUntilIdle();
    EXPECT_TRUE(std::filesystem::exists(folder + "/a.txt"));
}

TEST_F(ToolPathTest, WhatLeftTheOfferWhileItWasAskedAboutIsNotCarriedOut) {
    start();
    auto folder = allowFolder("Projekty");
    auto writing = local(companion->toolGate(), "mac.files.write", {{"path", "a.txt"}, {"content", "1"}});
    auto answer = std::make_shared<std::string>();
    executor.start([](Task<std::string> held, std::shared_ptr<std::string> kept) -> Task<void> {
        *kept = co_await std::move(held);
    }(std::move(writing), answer));
    executor.runUntilIdle();
    ASSERT_TRUE(companion->schvalovani().zadost().value());
    companion->integrations().turnOff(Integration::files);
    companion->schvalovani().rozhodnout(true);
    executor.runUntilIdle();
    EXPECT_EQ(*answer, errorOf("Nástroj mac.files.write tenhle Mac nemá."));
    EXPECT_FALSE(std::filesystem::exists(folder + "/a.txt"));
}

Task<void> noteLocal(ToolGate& gate, std::shared_ptr<std::string> answer) {
    *answer =
        co_await local(gate, "mac.files.write", boost::json::object{{"path", "a.txt"}, {"content", "1"}});
}

TEST_F(ToolPathTest, WhateverIsNotAYesRefusesTheOwnAssistant) {
    start();
    auto folder = allowFolder("Projekty");
    std::vector<std::function<void()>> ends{
        [this] { companion->schvalovani().rozhodnout(false); },
        [this] { clock.advance(120s); },
        [this] { sleep.fallAsleep(); },
    };
    for (const auto& end : ends) {
        auto answer = std::make_shared<std::string>();
        executor.start(noteLocal(companion->toolGate(), answer));
        executor.runUntilIdle();
        EXPECT_EQ(*answer, "");
        end();
        executor.runUntilIdle();
        EXPECT_EQ(*answer, errorOf("Akce nebyla potvrzena."));
    }
    EXPECT_FALSE(std::filesystem::exists(folder + "/a.txt"));
}

TEST_F(ToolPathTest, AGibibyteAnHourMayBeWrittenWhateverConnectionItComesBy) {
    startSecured();
    allowFolder("Projekty");
    // A block for each part of a path that no file can have, and one for the content: all but two blocks.
    constexpr std::size_t blocks = 1024 * 1024 * 1024 / 4096;
    const std::string parts(blocks - 4, '/');
    EXPECT_EQ(call("mac.files.write", R"({"path":")" + parts + R"(\u0000","content":"x"})").json,
              errorOf("Zápis selhal: Takovou cestu nejde použít."));
    (void)connectAgain();
    EXPECT_TRUE(call("mac.files.write", R"({"path":"a.txt","content":"x"})").ok);
    EXPECT_EQ(call("mac.files.write", R"({"path":"b.txt","content":"x"})").json,
              errorOf("Za poslední hodinu už bylo zapsáno tolik, kolik smí, tedy 1 GB. Zkus to později."));
}

} // namespace
} // namespace morvex

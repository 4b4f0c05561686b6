#include "app/tools/ToolTable.h"

#include "platform/memory/ManualExecutor.h"
#include "shared/wire/MacToolName.h"
#include "shared/wire/ToolCatalogue.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace morvex {
namespace {

using Names = std::vector<std::string>;

Names namesOf(const std::vector<ToolDescriptor>& tools) {
    Names all;
    for (const auto& tool : tools) all.push_back(tool.name);
    return all;
}

Task<ToolOutcome> nothing(NoArguments, ToolCall) {
    co_return ToolOutcome::done({});
}

Tool toolNamed(std::string_view name, std::function<bool()> isOffered = [] { return true; }) {
    return makeTool<NoArguments>({std::string(name), {}, ToolRisk::safeRead, {}, false}, std::move(isOffered),
                                 nothing);
}

/// Tools of a service outside, which come and go.
class ChangingTools final : public ToolSource {
  public:
    [[nodiscard]] std::vector<std::shared_ptr<const Tool>> tools() const override { return present; }

    void bring(Tool tool) { present.push_back(std::make_shared<const Tool>(std::move(tool))); }

    std::vector<std::shared_ptr<const Tool>> present;
};

TEST(ToolTable, KeepsTheOrderOfTheOfferWhateverWasAddedWhen) {
    ToolTable table;
    for (auto name : {MacToolName::mailCreateDraft, MacToolName::filesWrite, MacToolName::status})
        table.add(toolNamed(name));
    EXPECT_EQ(namesOf(table.offered()), (Names{"mac.status", "mac.files.write", "mac.mail.createDraft"}));
}

TEST(ToolTable, AToolThatTheCatalogueLacksGoesLast) {
    ToolTable table;
    for (const char* name : {"mac.made.up", "mac.status", "mac.made.up.too"}) table.add(toolNamed(name));
    EXPECT_EQ(namesOf(table.offered()), (Names{"mac.status", "mac.made.up", "mac.made.up.too"}));
}

TEST(ToolTable, AsksEveryConditionAnewAtEachOffer) {
    ToolTable table;
    bool on = false;
    table.add(toolNamed(MacToolName::filesRead, [&on] { return on; }));
    EXPECT_TRUE(table.offered().empty());
    EXPECT_NE(table.find("mac.files.read"), nullptr);
    on = true;
    EXPECT_EQ(namesOf(table.offered()), Names{"mac.files.read"});
}

TEST(ToolTable, ANameThatIsAddedTwiceEndsTheProcess) {
    ToolTable table;
    table.add(toolNamed(MacToolName::status));
    EXPECT_DEATH(table.add(toolNamed(MacToolName::status)), "added twice");
}

TEST(ToolTable, ASourceStandsBehindItsToolAndChangesWhileTheProgramRuns) {
    ToolTable table;
    ChangingTools service;
    table.add(service, MacToolName::webSearch);
    for (auto name : {MacToolName::codexRun, MacToolName::webSearch, MacToolName::contactsFind})
        table.add(toolNamed(name));
    EXPECT_EQ(namesOf(table.offered()), (Names{"mac.contacts.find", "mac.web.search", "mac.codex.run"}));
    service.bring(toolNamed("mac.custom.a.one"));
    service.bring(toolNamed("mac.custom.a.two"));
    EXPECT_EQ(namesOf(table.offered()), (Names{"mac.contacts.find", "mac.web.search", "mac.custom.a.one",
                                               "mac.custom.a.two", "mac.codex.run"}));
    service.present.clear();
    EXPECT_EQ(table.find("mac.custom.a.one"), nullptr);
}

TEST(ToolTable, ARunningToolKeepsItsRow) {
    ManualExecutor executor;
    ToolTable table;
    ChangingTools service;
    table.add(service, MacToolName::webSearch);
    service.bring(toolNamed("mac.custom.a.one"));
    const auto running = table.find("mac.custom.a.one");
    service.present.clear();
    EXPECT_EQ(running->descriptor.name, "mac.custom.a.one");
    EXPECT_TRUE(executor.run(running->run({})).value().ok);
}

TEST(ToolTable, TheStatusLeavesOutWhatThePhoneHasOfItsOwn) {
    ToolTable table;
    ChangingTools service;
    for (const auto& descriptor : ToolCatalogue::descriptors()) table.add(toolNamed(descriptor.name));
    service.bring(toolNamed("mac.custom.here.one"));
    auto ofThePhone = toolNamed("mac.custom.phone.one");
    ofThePhone.isInStatus = false;
    service.bring(std::move(ofThePhone));
    table.add(service, MacToolName::webSearch);
    EXPECT_EQ(namesOf(table.inStatus()),
              (Names{"mac.status", "mac.web.search", "mac.custom.here.one", "mac.codex.run",
                     "mac.codex.cancel", "mac.claude.run", "mac.claude.cancel", "mac.agent.rename",
                     "mac.files.search", "mac.files.read", "mac.files.write", "mac.terminal.run",
                     "mac.mail.search", "mac.mail.read", "mac.mail.send", "mac.mail.createDraft"}));
    EXPECT_EQ(table.offered().size(), ToolCatalogue::descriptors().size() + 2);
}

} // namespace
} // namespace morvex

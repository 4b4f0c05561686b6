#include "app/personal/NotesArchive.h"
#include "platform/posix/base/AtomicFile.h"
#include "platform/posix/base/FileDescriptor.h"
#include "shared/wire/Json.h"
#include "tests/e2e/EndToEnd.h"

#include <boost/json.hpp>

#include <array>
#include <fstream>
#include <set>
#include <sstream>
#include <sys/inotify.h>
#include <unistd.h>

namespace morvex {
namespace {

/// Counts how many times a file in a folder is replaced.
class ReplacementCounter {
  public:
    ReplacementCounter(const std::filesystem::path& folder, std::string name)
        : watch_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)), name_(std::move(name)) {
        EXPECT_GE(::inotify_add_watch(watch_.get(), folder.c_str(), IN_MOVED_TO), 0);
    }

    /// Since the last call.
    int take() {
        int count = 0;
        alignas(inotify_event) std::array<char, 65'536> events{};
        for (ssize_t size; (size = ::read(watch_.get(), events.data(), events.size())) > 0;)
            for (const char* at = events.data(); at < events.data() + size;) {
                const auto* event = reinterpret_cast<const inotify_event*>(at);
                if (event->len > 0 && name_ == event->name) ++count;
                at += sizeof(inotify_event) + event->len;
            }
        return count;
    }

  private:
    FileDescriptor watch_;
    std::string name_;
};

class NotesEndToEnd : public EndToEnd {
  protected:
    /// "title: body" of every note stored on the phone.
    std::set<std::string> onPhone() {
        std::set<std::string> notes;
        std::istringstream lines(phone({"--json", "notes", "list"}).output);
        for (std::string line; std::getline(lines, line);) notes.insert(text(parseJson(line).value()));
        return notes;
    }

    /// The same for the computer, read through its tool.
    std::set<std::string> onMac() {
        auto found = phone({"--json", "call", "mac.notes.search", R"({"limit":20})"});
        std::set<std::string> notes;
        auto result = parseJson(found.output.substr(0, found.output.find('\n')));
        for (const auto& note : result.value().at("notes").as_array()) notes.insert(text(note));
        return notes;
    }

    static std::string text(const boost::json::value& note) {
        return std::string(note.at("title").as_string()) + ": " + std::string(note.at("body").as_string());
    }

    /// Ends the computer, so that the phone is alone.
    static void end(Program& mac) {
        mac.type("konec");
        EXPECT_EQ(mac.wait(), 0);
    }

    void expect(std::vector<std::string> arguments, int code = 0) {
        auto ended = phone(std::move(arguments));
        EXPECT_EQ(ended.code, code) << ended.output;
    }

    /// Expects that the phone lists this record, and no record that the computer has not confirmed.
    void expectConfirmed(const std::string& kind, const std::string& title) {
        const auto listed = phone({kind, "list"});
        EXPECT_EQ(listed.code, 0);
        EXPECT_TRUE(listed.output.contains(title)) << listed.output;
        EXPECT_FALSE(listed.output.contains("nepotvrzeno")) << listed.output;
    }

    /// Creates many notes, as if the computer had had them for a long time.
    void layOnMac(int count) {
        NotesArchive archive;
        for (int i = 0; i < count; ++i) {
            std::array<std::uint8_t, 16> bytes{};
            bytes[0] = static_cast<std::uint8_t>(i >> 8);
            bytes[1] = static_cast<std::uint8_t>(i);
            const auto changed = dateFromSeconds(1'700'000'000 + i);
            archive.notes.records.push_back({Uuid::fromRandom(bytes), "Poznámka " + std::to_string(i),
                                             std::string(500, 'x'), changed, changed, 1, std::nullopt});
        }
        const auto file = temporary.path() / "mac/.local/share/Morvex/notes-from-iphone.json";
        ASSERT_TRUE(writeAtomically(file, asBytes(encode(archive))));
    }

    using Notes = std::set<std::string>;
};

TEST_F(NotesEndToEnd, NotesFromBothSidesComeTogetherAndADeletionReachesTheOther) {
    auto mac = startMac();
    pair(*mac);
    expect({"call", "mac.notes.create", R"({"title":"Z Macu","body":"jedna"})"});
    expect({"call", "mac.notes.create", R"({"title":"Společná","body":"první znění"})"});
    expect({"notes", "sync"});
    EXPECT_EQ(onPhone(), (Notes{"Z Macu: jedna", "Společná: první znění"}));
    end(*mac);

    expect({"notes", "create", "Z telefonu", "dvě", "--offline"});
    expect({"notes", "edit", "SPOLECNA", "druhé znění", "--offline"});
    expect({"notes", "delete", "z macu", "--timeout", "1"}, 4);
    EXPECT_EQ(onPhone(), (Notes{"Z telefonu: dvě", "Společná: druhé znění"}));

    mac = startMac();
    expect({"notes", "sync"});
    const Notes all{"Z telefonu: dvě", "Společná: druhé znění"};
    EXPECT_EQ(onPhone(), all);
    EXPECT_EQ(onMac(), all);

    expect({"call", "mac.notes.delete", R"({"title":"spolecna"})"});
    expect({"notes", "sync"});
    EXPECT_EQ(onPhone(), Notes{"Z telefonu: dvě"});
    end(*mac);
    mac = startMac();
    EXPECT_EQ(onMac(), Notes{"Z telefonu: dvě"}) << "the computer keeps them over its own restart";
}

TEST_F(NotesEndToEnd, ANoteThatTheComputerMakesReachesAWaitingPhoneAtOnce) {
    auto mac = startMac();
    pair(*mac);
    auto data = (temporary.path() / "phone").string();
    auto shell = std::make_unique<Program>(
        "morvex-phone", std::vector<std::string>{"--data", data, "--json", "shell"}, environment("phone"));
    shell->type(R"(call mac.notes.create {"title":"Hned","body":"teď"})");
    shell->waitForLine(R"("created":true)");
    shell->type("call mac.status");
    shell->waitForLine(R"("device")");
    shell->type("notes list");
    shell->waitForLine(R"("title":"Hned")");
    shell->type("quit");
    EXPECT_EQ(shell->wait(), 0) << shell->output();
}

TEST_F(NotesEndToEnd, AComputerThatHasLostItsFilesGetsEverythingBack) {
    auto mac = startMac();
    pair(*mac);
    expect({"notes", "create", "Z telefonu", "dvě"});
    expect({"call", "mac.notes.create", R"({"title":"Z Macu","body":"jedna"})"});
    expect({"summaries", "send", "Den", "psal jsem"});
    end(*mac);
    const auto kept = temporary.path() / "mac/.local/share/Morvex";
    std::filesystem::remove(kept / "notes-from-iphone.json");
    std::filesystem::remove(kept / "summaries-from-iphone.json");

    mac = startMac();
    expect({"notes", "sync"});
    EXPECT_EQ(onMac(), (Notes{"Z telefonu: dvě", "Z Macu: jedna"}));
    EXPECT_TRUE(std::filesystem::exists(kept / "summaries-from-iphone.json"));
    expectConfirmed("summaries", "Den");
}

TEST_F(NotesEndToEnd, HundredsOfNotesReachAFreshPhoneInAnyCommandWithOneSave) {
    auto mac = startMac();
    pair(*mac);
    end(*mac);
    constexpr int count = 700;
    layOnMac(count);
    mac = startMac();
    ReplacementCounter saves(temporary.path() / "phone", "records.json");
    expect({"call", "mac.status"});
    EXPECT_EQ(saves.take(), 1);
    EXPECT_EQ(onPhone().size(), static_cast<std::size_t>(count));
}

TEST_F(NotesEndToEnd, HundredsOfNotesReachAComputerThatHasLostItsOwnInOneSynchronization) {
    auto mac = startMac();
    pair(*mac);
    end(*mac);
    constexpr int count = 300;
    layOnMac(count);
    mac = startMac();
    expect({"notes", "sync"});
    end(*mac);
    std::filesystem::remove(temporary.path() / "mac/.local/share/Morvex/notes-from-iphone.json");
    mac = startMac();
    expect({"notes", "sync"});
    expectConfirmed("notes", "Poznámka " + std::to_string(count - 1));
    end(*mac);
    const auto kept =
        readWhole(temporary.path() / "mac/.local/share/Morvex/notes-from-iphone.json", 10'000'000);
    const auto archive = parseJson(asText(kept.value().value()));
    EXPECT_EQ(archive->at("notes").as_array().size(), static_cast<std::size_t>(count));
}

TEST_F(NotesEndToEnd, ASummaryOfThePhoneIsKeptOnTheComputer) {
    auto mac = startMac();
    pair(*mac);
    end(*mac);
    expect({"summaries", "send", "Den", "psal jsem", "mail", "--offline"});
    mac = startMac();
    expect({"notes", "sync"});
    expectConfirmed("summaries", "Den");
    expect({"summaries", "send", "Večer", "spal jsem"});
    auto file = temporary.path() / "mac/.local/share/Morvex/summaries-from-iphone.json";
    std::stringstream content;
    content << std::ifstream(file).rdbuf();
    auto kept = parseJson(content.str());
    ASSERT_TRUE(kept) << content.str();
    Notes summaries;
    for (const auto& summary : kept->at("summaries").as_array()) summaries.insert(text(summary));
    EXPECT_EQ(summaries, (Notes{"Den: psal jsem", "Večer: spal jsem"}));
}

} // namespace
} // namespace morvex

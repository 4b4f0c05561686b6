#include "shared/base/Utf8.h"
#include "shared/wire/Json.h"
#include "tests/attack/AttackedCompanion.h"
#include "tests/attack/NormaliserMeter.h"
#include "tests/support/Effort.h"

#include <string>
#include <vector>

namespace morvex {
namespace {

constexpr std::size_t kibibyte = 1024;

/// A letter and the characters repeated after it: `first` in the first half, `second` in the second.
struct Run {
    const char* what;
    std::string first;
    std::string second;

    [[nodiscard]] std::string text(std::size_t size) const {
        std::string text = "a";
        while (text.size() + first.size() <= size / 2) text += first;
        while (text.size() + second.size() <= size) text += second;
        return text;
    }
};

Run run(const char* what, const std::string& piece) {
    return {what, piece, piece};
}

std::vector<Run> runs() {
    return {run("acute accents", "\u0301"),
            run("grave accents below", "\u0316"),
            {"accents above, then below", "\u0301", "\u0316"},
            run("accents above and below in turn", "\u0301\u0316"),
            run("five classes, each before the one it belongs behind", "\u0345\u0301\u0316\u0327\u0338"),
            run("iotas below, which fold to a letter", "\u0345"),
            run("marks without a class that consist of two with one", "\u0f73"),
            run("Hangul jamo", "\u1112\u1161\u11ab"),
            run("joined people", "👩\u200d")};
}

std::vector<std::size_t> sizes() {
    if (!isLongRun()) return {64 * kibibyte, 256 * kibibyte};
    return {64 * kibibyte, 128 * kibibyte, 256 * kibibyte, 512 * kibibyte, 1024 * kibibyte};
}

/// Tools that take such a text as an argument, together with honest arguments.
struct Place {
    const char* tool;
    const char* before;
    const char* behind;
};

constexpr Place places[] = {
    {"mac.notes.search", R"({"query":")", R"("})"},
    {"mac.notes.create", R"({"title":")", R"(","body":"x"})"},
    {"mac.notes.update", R"({"title":")", R"(","body":"y"})"},
    {"mac.notes.update", R"({"title":"Jiná","new_title":")", R"("})"},
    {"mac.notes.update", R"({"title":"Jiná","body":")", R"("})"},
    {"mac.notes.delete", R"({"title":")", R"("})"},
    {"mac.files.search", R"({"pattern":")", R"("})"},
    {"mac.files.search", R"({"pattern":"kůň","folder":")", R"("})"},
    {"mac.files.read", R"({"path":")", R"("})"},
    {"mac.files.read", R"({"path":"kůň.txt","folder":")", R"("})"},
    {"mac.files.write", R"({"path":")", R"(","content":"x"})"},
    {"mac.files.write", R"({"path":"kůň.txt","content":"x","folder":")", R"("})"},
    {"mac.terminal.run", R"({"program":")", R"("})"},
    {"mac.terminal.run", R"({"program":"ls","folder":")", R"("})"},
};

/// A phone that sends texts which are expensive to compare.
class MarksAttack : public AttackedCompanion {
  protected:
    MorvexNote note(const std::string& title, const std::string& body) {
        return {random.uuid(), title, body, phoneClock.now(), phoneClock.now(), 1, {}};
    }

    /// Creates the honest notes and a file to be found.
    void prepare() {
        line = secure();
        forward(*line, phone.seal({MacPayload::NoteUpdate{note("Kůň", "úpěl ďábelské ódy")}}));
        forward(*line, phone.seal({MacPayload::NoteUpdate{note("Jiná", "x")}}));
        written.insert("kůň.txt");
        EXPECT_EQ(call(*line, "mac.files.write", R"({"path":"kůň.txt","content":"x"})"),
                  R"({"written":"kůň.txt"})");
    }

    /// The results of a search in the notes and one in the files.
    std::string search() {
        return call(*line, "mac.notes.search", R"({"query":"KŮŇ"})") +
               call(*line, "mac.files.search", R"({"pattern":"ku\u030an\u030c"})");
    }

    /// Searches again; returns the number of characters that were decomposed for it.
    std::size_t costOfSearch() {
        const auto before = meter.characters();
        EXPECT_EQ(search(), honest);
        return meter.characters() - before;
    }

    void send(MacPayload payload) {
        sent += encode(payload).size();
        ++messages;
        forward(*line, phone.seal(std::move(payload)));
    }

    void sendNote(const std::string& title, const std::string& body) {
        ++attacking.revision;
        attacking.title = title;
        attacking.body = body;
        send({MacPayload::NoteUpdate{attacking}});
    }

    /// Sends this text in every place where a phone can send one.
    void attack(const std::string& text) {
        sendNote(text, "x");
        sendNote("x", text);
        send({MacPayload::CustomApps{
            {{"p", text, "https://a", "t"}, {"q", firstBytes(text, 4000), "https://a", "t"}}}});
        send({MacPayload::Preferences{{"cs", text, {{{text, "doma"}}}}}});
        for (const auto& place : places) {
            const MacPayload::ToolCall made{place.tool, place.before + text + place.behind};
            send({made});
            EXPECT_FALSE(nextAnswer(*line).empty()) << place.tool;
        }
    }

    std::unique_ptr<HostileRelay::Line> line;
    NormaliserMeter meter;
    std::string honest; ///< the results of a search before the attack
    MorvexNote attacking = note("", "");
    std::size_t sent = 0;
    std::size_t messages = 0;
};

TEST_F(MarksAttack, NoRunOfThemMakesComparingDear) {
    prepare();
    honest = search();
    EXPECT_TRUE(honest.contains("ďábelské") && honest.contains("kůň.txt")) << honest;
    const auto usual = costOfSearch();
    for (const auto& each : runs())
        for (const auto size : sizes()) {
            attack(each.text(size));
            (void)costOfSearch();
            EXPECT_EQ(costOfSearch(), usual) << "once compared it costs nothing more: " << each.what;
        }
    constexpr std::size_t mostMarks = 30;
    EXPECT_EQ(meter.longestRun(), mostMarks);
    EXPECT_LE(meter.steps(), meter.characters() * mostMarks);
    EXPECT_LE(meter.characters(), sent);
    // A mebibyte of plain text in all these places alone takes more memory than an attack may.
    if (isLongRun()) memory = std::make_unique<MemoryMeter>();
    tries = messages;
    counted = std::to_string(meter.characters()) + " characters decomposed of " + std::to_string(sent) +
              " bytes, at most " + std::to_string(meter.longestRun()) + " marks of a letter";
}

} // namespace
} // namespace morvex

#include "bench/Measure.h"
#include "foundation/Text.h"
#include "foundation/TextPattern.h"
#include "shared/base/Require.h"
#include "tests/support/AwaitedStores.h"
#include "tests/support/TemporaryFolder.h"

#include MORVEX_BASICS

#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// Measures texts that a phone can make expensive to fold, compared with as much plain text: folding, naming a
// note, searching one, and searching it again.

namespace morvex {
namespace {

constexpr std::size_t textSize = 256 * 1024;
constexpr int rounds = 15;

struct Text {
    const char* what;
    std::string text;
};

std::string repeat(std::string_view piece, std::size_t size = textSize) {
    std::string text;
    while (text.size() + piece.size() <= size) text += piece;
    return text;
}

std::vector<Text> texts() {
    return {
        {"Czech text", repeat("Příliš žluťoučký kůň úpěl ďábelské ódy. ")},
        {"marks above, then below", "a" + repeat("\u0301", textSize / 2) + repeat("\u0316", textSize / 2)},
        {"marks above and below in turn", "a" + repeat("\u0301\u0316")},
        {"marks without a class", "a" + repeat("\u0f73")},
        {"letters that become three", repeat("\u0390")},
        {"joined people", repeat("👩\u200d")},
        {"flags", repeat("🇨🇿")},
        {"bytes that are no text", repeat("\xff")},
    };
}

/// A store with this text as a note of the phone.
struct Stored {
    TemporaryFolder support;
    std::unique_ptr<SystemClock> clock = SystemClock::create().value();
    SystemRandom random;
    AwaitedNotes store{support.path(), *clock, random};
    MorvexNote note{random.uuid(), "Poznámka", {}, clock->now(), clock->now(), 1, {}};

    void change(const std::string& body) {
        ++note.revision;
        note.body = body;
        require(store.prijmout(note), "a note was refused");
    }

    void search(const std::string& query) const {
        require(store.hledat(query, 20).empty(), "a ghost was found");
    }
};

template <class Work> void bench(const char* what, const std::vector<Text>& texts, Work work) {
    std::vector<std::function<void()>> works;
    for (const auto& text : texts) works.emplace_back([&text, &work] { work(text.text); });
    const auto took = costs(rounds, works);
    std::printf("%s:\n", what);
    for (std::size_t i = 0; i < texts.size(); ++i)
        std::printf("  %-31s %.2f ms (%.2f times)\n", texts[i].what, took[i].processor,
                    took[i].processor / took.front().processor);
}

void benchAll() {
    const auto all = texts();
    Stored stored;
    bench("folding 256 KiB", all, [](const std::string& text) { (void)fold(text); });
    bench("its first 160 characters", all, [](const std::string& text) { (void)excerpt(text, 160); });
    bench("as a query", all, [&](const std::string& text) { stored.search(text); });
    bench("taking it as a note and searching that", all, [&](const std::string& text) {
        stored.change(text);
        stored.search("není tam");
    });
    std::printf("searching each again:\n");
    for (const auto& text : all) {
        stored.change(text.text);
        stored.search("není tam");
        std::printf("  %-31s %.3f ms\n", text.what, median(rounds, [&] { stored.search("není tam"); }));
    }
}

} // namespace
} // namespace morvex

int main() {
    morvex::benchAll();
}

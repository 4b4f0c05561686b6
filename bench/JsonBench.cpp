#include "bench/Measure.h"
#include "shared/base/Require.h"
#include "shared/wire/Json.h"
#include "shared/wire/MacPayload.h"
#include "shared/wire/RelayMessage.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <new>
#include <string>
#include <string_view>
#include <vector>

// Measures the most expensive texts of 4 MiB that a phone or a relay can send, compared with a genuine one of
// the same length: a frame of the relay, a message of the link, the arguments of a tool.

namespace {

/// The most members that an object from outside may have.
constexpr std::size_t mostMembers = 680;
/// The size that the library allocates for them: a head, then each member and its slot.
constexpr std::size_t tableHead = 16;
constexpr std::size_t tableSize = tableHead + mostMembers * (sizeof(boost::json::key_value_pair) + 4);
/// The address of the table salts its hash, and an attacker could find it out by timing. Here the address is
/// fixed.
alignas(16) std::byte tableMemory[tableSize];

} // namespace

#if !__has_feature(address_sanitizer) && !__has_feature(thread_sanitizer)
// The sanitizers define these functions themselves; with them the table has any address.
void* operator new(std::size_t size) {
    void* memory = size == tableSize ? static_cast<void*>(tableMemory) : std::malloc(size);
    if (!memory) throw std::bad_alloc{};
    return memory;
}

void operator delete(void* memory) noexcept {
    if (memory != tableMemory) std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}
#endif

namespace morvex {
namespace {

constexpr std::size_t textSize = 4 * 1024 * 1024;
constexpr int rounds = 15;

std::string repeat(std::string_view piece, std::size_t size) {
    std::string text;
    text.reserve(size);
    while (text.size() + piece.size() <= size) text += piece;
    return text;
}

/// The library's slot for a name: FNV-1a seeded with the address of the table.
std::size_t slotOf(std::string_view name, std::uintptr_t table, std::size_t slots) {
    std::uint64_t hash = 0xcbf29ce484222325ULL + table;
    for (const char letter : name)
        hash = (static_cast<std::uint64_t>(static_cast<std::int64_t>(letter)) ^ hash) * 0x100000001b3ULL;
    return hash % slots;
}

/// This many names of seven letters that fall into the same slot of the table.
std::vector<std::string> collidingNames(std::size_t count, std::uintptr_t table) {
    std::vector<std::string> names;
    for (std::size_t i = 1'000'000; names.size() < count; ++i)
        if (auto name = std::to_string(i); slotOf(name, table, count) == 0) names.push_back(std::move(name));
    return names;
}

std::string objectOf(const std::vector<std::string>& names) {
    std::string text = "{";
    for (const auto& name : names) text += (text.size() > 1 ? ",\"" : "\"") + name + "\":0";
    return text + '}';
}

std::string lettersToFill(std::string before) {
    before += ",\"";
    return before + repeat("\\n", textSize - before.size() - 2) + "\"]";
}

bool usesTheTable(std::string_view text) {
    const auto root = parseDocument(text, messageLimits).value();
    const void* members = root.as_array().front().as_object().begin();
    return members == tableMemory + tableHead;
}

struct Hostile {
    const char* what;
    std::string text;
};

std::vector<Hostile> hostileTexts() {
    constexpr std::size_t bytesOfMember = 12;
    std::vector<std::string> many;
    for (std::size_t i = 0; i < textSize / bytesOfMember; ++i) many.push_back(std::to_string(1'000'000 + i));
    auto colliding = lettersToFill(
        '[' + objectOf(collidingNames(mostMembers, reinterpret_cast<std::uintptr_t>(tableMemory))));
    require(usesTheTable(colliding), "the names do not collide");
    const auto deep = std::string(60, '[') + std::string(60, ']') + ',';
    return {
        {"one object of all names", objectOf(many)},
        {"680 names that collide, then escapes", std::move(colliding)},
        {"as many lists as there may be, then escapes", lettersToFill('[' + repeat(deep, 33'000) + "0")},
        {"escapes", '"' + repeat("\\n", textSize - 2) + '"'},
        {"objects of one name", '[' + repeat("{\"\":0},", textSize - 3) + "0]"},
        {"lists within lists", '[' + repeat(deep, textSize - 3) + "0]"},
        {"a number", repeat("3", textSize)},
    };
}

/// `read` returns whether the text could be used, which does not matter for hostile texts.
template <class Read>
void bench(const char* what, const std::string& genuine, const std::vector<Hostile>& texts, Read read) {
    std::vector<std::function<void()>> works{[&] { require(read(genuine), "the genuine text is refused"); }};
    for (const auto& hostile : texts) works.emplace_back([&hostile, &read] { (void)read(hostile.text); });
    const auto took = costs(rounds, works);
    const double honest = took.front().processor;
    std::printf("%s of %.1f MiB: %.2f ms\n", what, static_cast<double>(genuine.size()) / (1024 * 1024),
                honest);
    for (std::size_t i = 0; i < texts.size(); ++i)
        std::printf("  %-43s %.2f ms (%.2f times)\n", texts[i].what, took[i + 1].processor,
                    took[i + 1].processor / honest);
}

void benchFrames() {
    constexpr std::size_t rest = 1024;
    const Bytes sealed((textSize - rest) / 4 * 3, 0xa5);
    Envelope envelope = keyExchange({"PAIR"}, {"PHONE"}, {"MAC"}, "session", sealed, {}, {});
    const auto genuine = encode(RelayMessage{RelayMessage::Forward{std::move(envelope)}});
    bench("a frame", genuine, hostileTexts(),
          [](const std::string& text) { return decode<RelayMessage>(text, messageLimits).has_value(); });
}

void benchMessages() {
    MorvexNote note;
    note.body = repeat("Příliš žluťoučký kůň úpěl ďábelské ódy, řekl „tiše“ a šel.\n", textSize - 1024);
    const auto genuine = encode(MacPayload{MacPayload::NoteUpdate{note}});
    bench("a note", genuine, hostileTexts(),
          [](const std::string& text) { return decode<MacPayload>(text, messageLimits).has_value(); });

    const auto arguments = encode(boost::json::object{{"path", "a.txt"}, {"content", note.body}});
    bench("arguments", arguments, hostileTexts(),
          [](const std::string& text) { return parseJson(text, messageLimits).has_value(); });
}

} // namespace
} // namespace morvex

int main() {
    morvex::benchFrames();
    morvex::benchMessages();
}

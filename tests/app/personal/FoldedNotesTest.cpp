#include "app/personal/FoldedNotes.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

/// Too long to lie within the string itself, so that its place tells whether it was made anew.
const std::string longText(100, 'A');

TEST(FoldedNotes, ATextIsFoldedOnceUntilTheNoteChanges) {
    FoldedNotes notes;
    MorvexNote note{{}, "Nákup", longText, {}, {}, 1, {}};
    const char* body = notes.of(note).body.data();
    EXPECT_EQ(notes.of(note).body.data(), body);
    EXPECT_EQ(notes.of(note).body, std::string(100, 'a'));

    note.body += "B";
    ++note.revision;
    EXPECT_EQ(notes.of(note).body, std::string(100, 'a') + "b");
    note.body += "C";
    note.updatedAt += std::chrono::seconds(1);
    EXPECT_EQ(notes.of(note).body, std::string(100, 'a') + "bc");
    note.title = "Úklid";
    EXPECT_EQ(notes.of(note).name, "uklid");
}

TEST(FoldedNotes, EachNoteHasItsOwn) {
    FoldedNotes notes;
    const MorvexNote first{Uuid::fromRandom({1}), "První", longText, {}, {}, 1, {}};
    const MorvexNote second{Uuid::fromRandom({2}), "DRUHÁ", "Kůň", {}, {}, 1, {}};
    const char* body = notes.of(first).body.data();
    EXPECT_EQ(notes.of(second).name, "druha");
    EXPECT_EQ(notes.of(second).title, "druha\u0301");
    EXPECT_EQ(notes.of(second).body, "ku\u030an\u030c");
    EXPECT_EQ(notes.of(first).body.data(), body);
    EXPECT_EQ(notes.of(first).name, "prvni");
}

TEST(FoldedNotes, ThoseThatAreGoneAreForgotten) {
    FoldedNotes notes;
    const MorvexNote first{Uuid::fromRandom({1}), "První", longText, {}, {}, 1, {}};
    const MorvexNote second{Uuid::fromRandom({2}), "Druhá", longText, {}, {}, 1, {}};
    const char* body = notes.of(first).body.data();
    (void)notes.of(second);
    notes.keepOnly([&first](const Uuid& id) { return id == first.id; });
    EXPECT_EQ(notes.size(), 1U);
    EXPECT_EQ(notes.of(first).body.data(), body);
}

} // namespace
} // namespace morvex

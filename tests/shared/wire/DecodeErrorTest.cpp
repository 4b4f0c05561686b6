#include "shared/wire/DecodeError.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace morvex {
namespace {

using Reason = DecodeError::Reason;

TEST(DecodeErrorTest, TellsTheWholeOrItsFieldInASentence) {
    struct Row {
        Reason reason;
        const char* found;
        const char* ofTheWhole;
        const char* ofAField;
    };

    const auto ofTheWhole = "the same";
    for (const auto& row : {
             Row{Reason::tooLong, "", "Zpráva je příliš dlouhá.", ofTheWhole},
             Row{Reason::notJson, "7", "Zpráva není platný JSON (bajt 7).", ofTheWhole},
             Row{Reason::tooManyValues, "", "Zpráva má příliš mnoho hodnot.", ofTheWhole},
             Row{Reason::missing, "", "Zpráva chybí.", "Pole „items[1].risk“ chybí."},
             Row{Reason::wrongType, "text", "Zpráva má špatný typ (text).",
                 "Pole „items[1].risk“ má špatný typ (text)."},
             Row{Reason::unknownWord, "maybe", "Zpráva má neznámou hodnotu „maybe“.",
                 "Pole „items[1].risk“ má neznámou hodnotu „maybe“."},
             Row{Reason::outOfRange, "", "Zpráva má číslo mimo rozsah.",
                 "Pole „items[1].risk“ má číslo mimo rozsah."},
             Row{Reason::badText, "?", "Zpráva má nečitelnou hodnotu „?“.",
                 "Pole „items[1].risk“ má nečitelnou hodnotu „?“."},
             Row{Reason::caseCount, "", "Invalid number of keys found, expected one.", ofTheWhole},
             Row{Reason::unknownCase, "new", "Zpráva má neznámý druh „new“.",
                 "Pole „items[1].risk“ má neznámý druh „new“."},
         }) {
        EXPECT_EQ((DecodeError{row.reason, "", Sentence(row.found)}).popis().czech(), row.ofTheWhole);
        EXPECT_EQ((DecodeError{row.reason, "items[1].risk", Sentence(row.found)}).popis().czech(),
                  row.ofAField == ofTheWhole ? row.ofTheWhole : row.ofAField);
    }
}

TEST(DecodeErrorTest, QuotesWhatWasReadAsItIsAndTranslatesItsType) {
    const auto inAnotherLanguage = [](Reason reason) {
        return DecodeError{reason, "", "text"_sentence}.popis().in([](std::string_view czech, std::int64_t) {
            return czech == "text" ? std::string("string") : std::string(czech);
        });
    };
    EXPECT_EQ(inAnotherLanguage(Reason::unknownWord), "Zpráva má neznámou hodnotu „text“.");
    EXPECT_EQ(inAnotherLanguage(Reason::wrongType), "Zpráva má špatný typ (string).");
}

} // namespace
} // namespace morvex

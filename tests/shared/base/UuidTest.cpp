#include "shared/base/Uuid.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(Uuid, IsWrittenInUpperCaseWhateverItWasReadFrom) {
    const auto uuid = Uuid::parse("a3f45126-91ae-49cf-A231-8ea42e787339");
    ASSERT_TRUE(uuid);
    EXPECT_EQ(uuid->text(), "A3F45126-91AE-49CF-A231-8EA42E787339");
    EXPECT_EQ(Uuid::parse(uuid->text()), uuid);
}

TEST(Uuid, RefusesEveryOtherForm) {
    for (const auto* text : {
             "",
             "A3F4512691AE49CFA2318EA42E787339",
             "{A3F45126-91AE-49CF-A231-8EA42E787339}",
             "A3F45126-91AE-49CF-A231-8EA42E78733",
             "A3F45126-91AE-49CF-A231-8EA42E7873390",
             "A3F4512-691AE-49CF-A231-8EA42E787339",
             "A3F45126_91AE_49CF_A231_8EA42E787339",
             "G3F45126-91AE-49CF-A231-8EA42E787339",
             "-3F45126-91AE-49CF-A231-8EA42E787339",
             " 3F45126-91AE-49CF-A231-8EA42E787339",
         })
        EXPECT_FALSE(Uuid::parse(text)) << text;
}

TEST(Uuid, SetsVersionAndVariantOfARandomOne) {
    std::array<std::uint8_t, 16> ones;
    ones.fill(0xff);
    EXPECT_EQ(Uuid::fromRandom(ones).text(), "FFFFFFFF-FFFF-4FFF-BFFF-FFFFFFFFFFFF");
    EXPECT_EQ(Uuid::fromRandom({}).text(), "00000000-0000-4000-8000-000000000000");
}

} // namespace
} // namespace morvex

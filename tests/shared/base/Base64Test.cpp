#include "shared/base/Base64.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

// RFC 4648, section 10.
TEST(Base64, GivesTheVectorsOfTheStandard) {
    const std::pair<const char*, const char*> vectors[] = {
        {"", ""},
        {"f", "Zg=="},
        {"fo", "Zm8="},
        {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="},
        {"fooba", "Zm9vYmE="},
        {"foobar", "Zm9vYmFy"},
    };
    for (const auto& [plain, coded] : vectors) {
        EXPECT_EQ(base64Encode(asBytes(plain)), coded);
        EXPECT_EQ(base64Decode(coded), toBytes(plain));
    }
}

TEST(Base64, CarriesEveryByte) {
    Bytes bytes;
    for (int value = 0; value < 256; ++value) bytes.push_back(static_cast<std::uint8_t>(value));
    for (; !bytes.empty(); bytes.pop_back()) EXPECT_EQ(base64Decode(base64Encode(bytes)), bytes);
}

TEST(Base64, RefusesWhatIsNotStrict) {
    for (const auto* text :
         {"Z", "Zg", "Zg=", "Zm9vYg", "Zh==", "Zm9=", "Z===", "====", "=Zg=", "Zg=a", "Zg==Zm9v", "Zm 9v",
          "Zm9v\n", " Zm9", "Zm-_", "Zm9\xc3", "Zm9v====", "\xff\xff\xff\xff"})
        EXPECT_FALSE(base64Decode(text)) << text;
}

} // namespace
} // namespace morvex

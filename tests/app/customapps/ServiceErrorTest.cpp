#include "app/customapps/ServiceError.h"

#include <gtest/gtest.h>

#include <vector>

namespace morvex {
namespace {

TEST(ServiceError, EachCaseHasItsSentence) {
    using E = ServiceError;
    const std::vector<std::pair<E, std::string>> rows{
        {{E::Http{503}}, "Vlastní aplikace vrátila HTTP 503."},
        {{E::Server{"Limit vyčerpán"}}, "Limit vyčerpán"},
        {{E::MissingName{}}, "Doplň název vlastní aplikace."},
        {{E::InvalidAddress{}}, "Adresa vlastní aplikace musí být platné HTTPS."},
        {{E::InvalidResponse{}}, "Vlastní aplikace vrátila neplatnou odpověď."},
        {{E::Authentication{}}, "Vlastní aplikace odmítla přístupový token."},
    };
    for (const auto& [error, sentence] : rows) EXPECT_EQ(error.popis().czech(), sentence);
}

} // namespace
} // namespace morvex

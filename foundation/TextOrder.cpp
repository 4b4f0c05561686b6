#include "foundation/TextOrder.h"

#include "foundation/IcuText.h"
#include "shared/base/Require.h"

#include <unicode/coll.h>

namespace morvex {

struct TextOrder::Rules {
    std::unique_ptr<icu::Collator> collator;
};

TextOrder::TextOrder() {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(icu::Locale("cs"), status));
    require(U_SUCCESS(status), "ICU has no order of texts");
    // Letters and accents count, case does not.
    collator->setStrength(icu::Collator::SECONDARY);
    rules_ = std::make_unique<const Rules>(std::move(collator));
}

TextOrder::~TextOrder() = default;

std::weak_ordering TextOrder::compare(std::string_view left, std::string_view right) const {
    UErrorCode status = U_ZERO_ERROR;
    const auto order = rules_->collator->compare(icuText::fromUtf8(left), icuText::fromUtf8(right), status);
    require(U_SUCCESS(status), "ICU cannot compare texts");
    return order <=> 0;
}

} // namespace morvex

#include "tests/attack/NormaliserMeter.h"

#include "shared/base/Require.h"

#include <unicode/normalizer2.h>
#include <unicode/uniset.h>

#include <algorithm>
#include <atomic>
#include <mutex>

namespace morvex {

namespace {

struct Work {
    std::size_t characters = 0;
    std::size_t steps = 0;
    std::size_t longestRun = 0;
};

struct Counted {
    std::mutex mutex;
    Work work;
};

Counted& counted() {
    static Counted instance;
    return instance;
}

Work workOf(const icu::Normalizer2& library, const icu::UnicodeString& text) {
    Work work;
    std::size_t run = 0;
    for (std::int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
        run = library.hasBoundaryBefore(text.char32At(i)) ? 0 : run + 1;
        ++work.characters;
        work.steps += run;
        work.longestRun = std::max(work.longestRun, run);
    }
    return work;
}

/// A filter that excludes nothing; only this class of the library can be derived from.
class CountingNormaliser final : public icu::FilteredNormalizer2 {
  public:
    CountingNormaliser(const icu::Normalizer2& library, const icu::UnicodeSet& all)
        : FilteredNormalizer2(library, all), library_(library) {}

    icu::UnicodeString& normalize(const icu::UnicodeString& text, icu::UnicodeString& result,
                                  UErrorCode& status) const override {
        constexpr std::size_t longRun = 10'000;
        const auto work = workOf(library_, text);
        {
            std::lock_guard lock(counted().mutex);
            auto& sum = counted().work;
            sum.characters += work.characters;
            sum.steps += work.steps;
            sum.longestRun = std::max(sum.longestRun, work.longestRun);
        }
        if (work.longestRun > longRun) return result = text;
        return library_.normalize(text, result, status);
    }

  private:
    const icu::Normalizer2& library_;
};

} // namespace

NormaliserMeter::NormaliserMeter() {
    std::lock_guard lock(counted().mutex);
    counted().work = {};
}

std::size_t NormaliserMeter::characters() const {
    std::lock_guard lock(counted().mutex);
    return counted().work.characters;
}

std::size_t NormaliserMeter::steps() const {
    std::lock_guard lock(counted().mutex);
    return counted().work.steps;
}

std::size_t NormaliserMeter::longestRun() const {
    std::lock_guard lock(counted().mutex);
    return counted().work.longestRun;
}

} // namespace morvex

U_NAMESPACE_BEGIN

const Normalizer2* Normalizer2::getNFDInstance(UErrorCode& status) {
    const auto* library = getInstance(nullptr, "nfc", UNORM2_DECOMPOSE, status);
    morvex::require(U_SUCCESS(status), "ICU has no normalization data");
    static const UnicodeSet all(0, 0x10ffff);
    static const morvex::CountingNormaliser instance(*library, all);
    return &instance;
}

U_NAMESPACE_END

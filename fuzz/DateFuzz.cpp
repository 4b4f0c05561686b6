#include "shared/base/Bytes.h"
#include "shared/base/Date.h"
#include "shared/base/Require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    const auto text = asText({data, size});
    if (const auto date = parseWireDate(text)) vyzaduj(formatDate(*date) == text, "a date has one form only");
    return 0;
}

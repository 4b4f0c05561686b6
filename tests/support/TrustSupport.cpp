#include "tests/support/TrustSupport.h"

#include "shared/base/Require.h"

#include <boost/algorithm/hex.hpp>

#include <iterator>

namespace morvex::test {

Bytes unhex(std::string_view digits) {
    Bytes bytes;
    boost::algorithm::unhex(digits, std::back_inserter(bytes));
    return bytes;
}

std::string hex(ByteView bytes) {
    std::string digits;
    boost::algorithm::hex_lower(bytes.begin(), bytes.end(), std::back_inserter(digits));
    return digits;
}

RawKey key32(ByteView bytes) {
    require(bytes.size() == keySize, "the test gives 32 bytes");
    RawKey key;
    std::ranges::copy(bytes, key.begin());
    return key;
}

} // namespace morvex::test

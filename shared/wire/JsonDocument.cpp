#include "shared/wire/JsonDocument.h"

#include "shared/base/Try.h"
#include "shared/base/Utf8.h"
#include "shared/wire/DecodeError.h"
#include "shared/wire/JsonHandler.h"

#include <boost/json.hpp>
#include <boost/json/basic_parser_impl.hpp>

#include <string>

namespace morvex {
namespace {

constexpr std::size_t parserBufferSize = 4096;

/// Accepts the parts of a text and stores none.
struct NoValues {
    void push_object(std::size_t) {}

    void push_array(std::size_t) {}

    void push_chars(std::string_view) {}

    void push_key(std::string_view) {}

    void push_string(std::string_view) {}

    void push_int64(std::int64_t) {}

    void push_uint64(std::uint64_t) {}

    void push_double(double) {}

    void push_bool(bool) {}

    void push_null() {}
};

template <class Values> using Parser = boost::json::basic_parser<JsonHandler<Values>>;

boost::json::parse_options strictOptions(std::string_view text) {
    boost::json::parse_options strict;
    strict.max_depth = jsonDepthLimit;
    // The library's own UTF-8 check takes several times longer, so it runs only when it has to find the
    // position of an error.
    strict.allow_invalid_utf8 = isValidUtf8(text);
    return strict;
}

template <class Values>
Result<void> readWith(Parser<Values>& parser, std::string_view text, JsonLimits limits) {
    using Reason = DecodeError::Reason;
    if (text.size() > limits.size) return fail(DecodeError{Reason::tooLong, {}, {}});
    boost::json::error_code broken;
    const auto readBytes = parser.write_some(false, text.data(), text.size(), broken);
    if (parser.handler().asksTooMuch) return fail(DecodeError{Reason::tooManyValues, {}, {}});
    if (broken || readBytes < text.size())
        return fail(DecodeError{Reason::notJson, {}, Sentence(std::to_string(readBytes))});
    return {};
}

} // namespace

Result<boost::json::value> parseDocument(std::string_view text, JsonLimits limits) {
    unsigned char buffer[parserBufferSize];
    Parser<boost::json::value_stack> parser{strictOptions(text), limits, boost::json::storage_ptr{}, buffer,
                                            sizeof buffer};
    auto& values = parser.handler().values;
    values.reset();
    CHECK(readWith(parser, text, limits));
    return values.release();
}

Result<void> checkReadable(std::string_view json, JsonLimits limits) {
    Parser<NoValues> parser{strictOptions(json), limits};
    return readWith(parser, json, limits);
}

} // namespace morvex

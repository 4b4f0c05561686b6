#include "shared/wire/JsonDocument.h"

#include "shared/base/Try.h"
#include "shared/base/Utf8.h"
#include "shared/wire/DecodeError.h"

#include <algorithm>
#include <new>

namespace morvex {
namespace {

constexpr std::size_t budgetPerByte = 4;
constexpr std::size_t budgetAtLeast = 8 * 1024 * 1024;
constexpr std::size_t parserBufferSize = 4096;
/// More than any value takes in a text that has no long strings.
constexpr std::size_t bytesPerValue = 256;

/// What a text may take besides a part for each of its bytes.
std::size_t baseBudget(std::size_t limit) {
    return std::max(budgetAtLeast, limit / 2);
}

/// Never less than the values of a text without white space between them. A comma within a string counts
/// only when no space follows, as one seldom does there.
std::size_t countValues(std::string_view json) {
    std::size_t values = 1;
    for (std::size_t i = 0; i + 1 < json.size(); ++i) {
        const bool opens = json[i] == '[' || json[i] == '{';
        values += opens || (json[i] == ',' && json[i + 1] != ' ') ? 1U : 0U;
    }
    return values;
}

} // namespace

// The library does not always free with the alignment that it asked for, and never asks for more than the
// default.
void* JsonDocument::Budget::do_allocate(std::size_t size, std::size_t) {
    if (size > left) throw std::bad_alloc{};
    left -= size;
    return ::operator new(size);
}

void JsonDocument::Budget::do_deallocate(void* memory, std::size_t size, std::size_t) {
    left += size;
    ::operator delete(memory, size);
}

Result<const boost::json::value*> JsonDocument::parse(std::string_view text, std::size_t limit) {
    using Reason = DecodeError::Reason;
    if (text.size() > limit) return fail(DecodeError{Reason::tooLong, {}, {}});
    budget_.left = text.size() * budgetPerByte + baseBudget(limit);
    boost::json::parse_options strict;
    strict.max_depth = jsonDepthLimit;
    // The library looks several times longer; it has to find the place only when there is one.
    strict.allow_invalid_utf8 = isValidUtf8(text);
    unsigned char buffer[parserBufferSize];
    try {
        boost::json::stream_parser parser{&budget_, strict, buffer, sizeof buffer};
        parser.reset(&budget_);
        boost::json::error_code broken;
        const auto readBytes = parser.write_some(text, broken);
        if (!broken && readBytes < text.size()) broken = boost::json::error::extra_data;
        if (!broken) parser.finish(broken);
        if (broken) return fail(DecodeError{Reason::notJson, {}, std::to_string(readBytes)});
        auto root = parser.release();
        root_.emplace(boost::json::pilfer(root));
    } catch (const std::bad_alloc&) {
        return fail(DecodeError{Reason::tooManyValues, {}, {}});
    }
    return &*root_;
}

Result<void> checkReadable(std::string_view json, std::size_t limit) {
    // Counting takes a small part of the time of parsing, and is enough for what most people keep.
    const auto base = baseBudget(limit);
    if (json.size() <= std::min(limit, base) && countValues(json) <= base / bytesPerValue) return {};
    JsonDocument document;
    CHECK(document.parse(json, limit));
    return {};
}

} // namespace morvex

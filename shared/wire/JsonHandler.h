#pragma once

#include "shared/wire/JsonMeter.h"

#include <boost/json/error.hpp>
#include <boost/json/string_view.hpp>

#include <cstdint>
#include <limits>
#include <utility>

namespace morvex {

/// The handler that `boost::json::basic_parser` calls for each part of a text. It meters the text and passes
/// the parts on to `values`, which is a `boost::json::value_stack` or has the same interface.
template <class Values> class JsonHandler {
  public:
    using Text = boost::json::string_view;
    using Failure = boost::json::error_code;

    // Nothing in a text within its limits can be as long.
    static constexpr std::size_t max_object_size = std::numeric_limits<std::int32_t>::max();
    static constexpr std::size_t max_array_size = max_object_size;
    static constexpr std::size_t max_key_size = max_object_size;
    static constexpr std::size_t max_string_size = max_object_size;

    template <class... Arguments>
    explicit JsonHandler(JsonLimits limits, Arguments&&... arguments)
        : values(std::forward<Arguments>(arguments)...), meter(limits) {}

    bool on_document_begin(Failure&) { return true; }

    bool on_document_end(Failure&) { return true; }

    bool on_object_begin(Failure& failure) { return goesOn(meter.openObject(), failure); }

    bool on_array_begin(Failure& failure) { return goesOn(meter.addValue(), failure); }

    // The members of an object are still a list here; `push_object` makes the table.
    bool on_object_end(std::size_t members, Failure& failure) {
        if (!goesOn(meter.closeObject(members), failure)) return false;
        values.push_object(members);
        return true;
    }

    bool on_array_end(std::size_t elements, Failure&) {
        values.push_array(elements);
        return true;
    }

    bool on_key_part(Text part, std::size_t, Failure&) {
        values.push_chars(part);
        return true;
    }

    bool on_key(Text lastPart, std::size_t size, Failure&) {
        meter.addName(size);
        values.push_key(lastPart);
        return true;
    }

    bool on_string_part(Text part, std::size_t, Failure&) {
        values.push_chars(part);
        return true;
    }

    bool on_string(Text lastPart, std::size_t, Failure& failure) {
        values.push_string(lastPart);
        return goesOn(meter.addValue(), failure);
    }

    bool on_number_part(Text, Failure&) { return true; }

    bool on_int64(std::int64_t number, Text, Failure& failure) {
        values.push_int64(number);
        return goesOn(meter.addValue(), failure);
    }

    bool on_uint64(std::uint64_t number, Text, Failure& failure) {
        values.push_uint64(number);
        return goesOn(meter.addValue(), failure);
    }

    bool on_double(double number, Text, Failure& failure) {
        values.push_double(number);
        return goesOn(meter.addValue(), failure);
    }

    bool on_bool(bool flag, Failure& failure) {
        values.push_bool(flag);
        return goesOn(meter.addValue(), failure);
    }

    bool on_null(Failure& failure) {
        values.push_null();
        return goesOn(meter.addValue(), failure);
    }

    bool on_comment_part(Text, Failure&) { return true; }

    bool on_comment(Text, Failure&) { return true; }

    Values values;
    JsonMeter meter;
    bool asksTooMuch = false;

  private:
    bool goesOn(bool isWithinLimits, Failure& failure) {
        if (isWithinLimits) return true;
        asksTooMuch = true;
        failure = boost::json::error::object_too_large;
        return false;
    }
};

} // namespace morvex

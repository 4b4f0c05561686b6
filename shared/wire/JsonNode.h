#pragma once

#include "shared/base/Bytes.h"
#include "shared/base/Date.h"
#include "shared/base/Sentence.h"
#include "shared/base/Uuid.h"
#include "shared/wire/DecodeError.h"

#include <boost/json.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// The position of a node: a linked list on the stack of the readers. It becomes text only for a failure.
struct JsonPath {
    const JsonPath* parent = nullptr;
    std::string_view key;  ///< empty for an array's element
    std::size_t index = 0; ///< of an array's element

    [[nodiscard]] std::string text() const;
};

/// One value of a parsed document, while a record is read from it. The first failure is kept in `failure`.
class JsonNode {
  public:
    JsonNode(const boost::json::value& value, const JsonPath& path, std::optional<Error>& failure)
        : value_(value), path_(path), failure_(failure) {}

    [[nodiscard]] JsonNode child(const boost::json::value& value, const JsonPath& path) const {
        return {value, path, failure_};
    }

    [[nodiscard]] const JsonPath& path() const { return path_; }

    /// Null when the value has another type; the failure is then recorded.
    [[nodiscard]] const boost::json::object* object() const;
    [[nodiscard]] const boost::json::array* array() const;
    [[nodiscard]] const boost::json::string* string() const;

    bool read(bool& flag) const;
    bool read(std::string& text) const;
    /// Reads a plain text; placeholders and values of the sentence are not transferred.
    bool read(Sentence& sentence) const;
    /// Also a floating number without a fraction, up to 2^53.
    bool read(std::int64_t& number) const;
    bool read(std::uint64_t& number) const;
    bool read(std::uint16_t& number) const;
    /// Finite and below 2^63, so that whole seconds fit an integer.
    bool read(double& number) const;
    bool read(Date& date) const;
    bool read(Uuid& uuid) const;
    bool read(Bytes& bytes) const;

    /// Records the failure at this node and returns false.
    bool fail(DecodeError::Reason reason, std::string_view found = {}) const;
    /// Records a failure that has its own cause type and returns false.
    bool fail(Error cause) const;

  private:
    bool failType() const;
    template <class Number> bool readInteger(Number& number) const;

    const boost::json::value& value_;
    const JsonPath& path_;
    std::optional<Error>& failure_;
};

} // namespace morvex

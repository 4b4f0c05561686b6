#pragma once

#include "shared/wire/Describe.h"

#include <boost/json/object.hpp>

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace morvex {

// A tool's arguments are a record that is described once, like the records sent over the link:
//
//     struct FileToRead {
//         std::string path;
//         std::optional<std::string> folder;
//     };
//
//     void describe(auto& io, Is<FileToRead> auto& file) {
//         io.required("path", file.path);
//         io.optional("folder", file.folder);
//     }
//
// Reading never fails, because the tool itself says what is missing: a value of the wrong JSON type counts as
// missing.

/// Only a record with an optional field distinguishes a missing text from an empty one.
std::optional<std::string> readArgument(const boost::json::object& arguments, std::string_view name,
                                        std::string);
/// A fraction is cut off; a number beyond 64 bits counts as missing.
std::optional<std::int64_t> readArgument(const boost::json::object& arguments, std::string_view name,
                                         std::int64_t);
std::optional<bool> readArgument(const boost::json::object& arguments, std::string_view name, bool);
/// The whole list counts as missing if one element is not a text.
std::optional<std::vector<std::string>> readArgument(const boost::json::object& arguments,
                                                     std::string_view name, std::vector<std::string>);

class ArgumentReader {
  public:
    explicit ArgumentReader(const boost::json::object& arguments) : arguments_(arguments) {}

    /// A missing one counts as empty.
    template <class T> void required(std::string_view name, T& field) {
        field = readArgument(arguments_, name, T()).value_or(T());
    }

    /// A missing one differs from an empty one.
    template <class T> void required(std::string_view name, std::optional<T>& field) {
        field = readArgument(arguments_, name, T());
    }

    template <class T> void optional(std::string_view name, std::optional<T>& field) {
        field = readArgument(arguments_, name, T());
    }

    /// An argument that the schema does not mention: the phone itself adds it to what the model wrote.
    template <class T> void added(std::string_view name, std::optional<T>& field) { optional(name, field); }

  private:
    const boost::json::object& arguments_;
};

template <class Record> Record readArguments(const boost::json::object& arguments) {
    ArgumentReader reader(arguments);
    Record record;
    describe(reader, record);
    return record;
}

/// One argument as a record declares it.
struct ArgumentRow {
    std::string name;
    std::string type; ///< JSON Schema name of the type
    bool isRequired = false;

    bool operator==(const ArgumentRow&) const = default;
};

/// Lists the fields that a record declares, except those that the phone adds, for comparison with the schema.
class ArgumentLister {
  public:
    template <class T> void required(std::string_view name, T&) {
        rows.push_back({std::string(name), typeName<T>(), true});
    }

    template <class T> void required(std::string_view name, std::optional<T>&) {
        rows.push_back({std::string(name), typeName<T>(), true});
    }

    template <class T> void optional(std::string_view name, std::optional<T>&) {
        rows.push_back({std::string(name), typeName<T>(), false});
    }

    template <class T> void added(std::string_view, std::optional<T>&) {}

    std::vector<ArgumentRow> rows;

  private:
    template <class T> static constexpr const char* typeName() {
        if constexpr (std::same_as<T, std::string>)
            return "string";
        else if constexpr (std::same_as<T, bool>)
            return "boolean";
        else if constexpr (std::same_as<T, std::int64_t>)
            return "number";
        else
            return "array";
    }
};

template <class Record> std::vector<ArgumentRow> listArguments() {
    ArgumentLister lister;
    Record record;
    describe(lister, record);
    return std::move(lister.rows);
}

/// For a tool without arguments.
struct NoArguments {};

void describe(auto&, Is<NoArguments> auto&) {}

} // namespace morvex

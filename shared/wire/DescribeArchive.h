#pragma once

#include "shared/wire/ArchivedList.h"
#include "shared/wire/Describe.h"
#include "shared/wire/NumericDate.h"

namespace morvex {

/// Adapter between a record's `describe` and the reader or writer that turns dates into numbers.
template <class Io> class WithNumericDates {
  public:
    explicit WithNumericDates(Io& io) : io_(io) {}

    template <class Field> void required(std::string_view name, Field& field) { io_.required(name, field); }

    template <class Field> void optional(std::string_view name, Field& field) { io_.optional(name, field); }

    void required(std::string_view name, const Date& written) { io_.required(name, NumericDate{written}); }

    void optional(std::string_view name, const std::optional<Date>& written) {
        if (written) required(name, *written);
    }

    void required(std::string_view name, Date& read) {
        NumericDate numeric;
        io_.required(name, numeric);
        read = numeric;
    }

    void optional(std::string_view name, std::optional<Date>& read) {
        std::optional<NumericDate> numeric;
        io_.optional(name, numeric);
        read = numeric;
    }

  private:
    Io& io_;
};

template <class Record>
void Codec<ArchivedList<Record>>::write(std::string& out, const ArchivedList<Record>& list) {
    out += '[';
    for (const auto& record : list.records) {
        if (&record != list.records.data()) out += ',';
        RecordWriter writer{out};
        WithNumericDates io{writer};
        describe(io, record);
        writer.finish();
    }
    out += ']';
}

template <class Record>
bool Codec<ArchivedList<Record>>::read(const JsonNode& node, ArchivedList<Record>& list) {
    const auto* array = node.array();
    if (!array) return false;
    list.records.clear();
    for (const auto& element : *array) {
        const JsonPath path{&node.path(), {}, list.records.size()};
        const auto child = node.child(element, path);
        const auto* object = child.object();
        if (!object) return false;
        RecordReader reader{child, *object};
        WithNumericDates io{reader};
        describe(io, list.records.emplace_back());
        if (!reader.ok()) return false;
    }
    return true;
}

} // namespace morvex

#pragma once

#include "app/tools/ArgumentRecord.h"
#include "foundation/Task.h"
#include "shared/base/Error.h"
#include "shared/wire/ToolDescriptor.h"

#include <boost/json/object.hpp>

#include <functional>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// One call of a tool, from the phone or from this computer's own assistant.
struct ToolCall {
    std::string name;
    boost::json::object arguments;
    std::string requestID; ///< identifies the call in progress messages
    /// Its stop is requested when the phone that made the call is unpaired. Programs that the call has
    /// started end then, even if the call was already answered.
    std::stop_token abandonment = {};
};

/// What a tool answers: a JSON object, and whether it did its work.
struct ToolOutcome {
    bool ok = false;
    boost::json::object result;

    static ToolOutcome done(boost::json::object result) { return {true, std::move(result)}; }

    /// The single key `error` with a sentence that can be read out.
    static ToolOutcome refused(std::string sentence) { return {false, {{"error", std::move(sentence)}}}; }

    static ToolOutcome refused(const Error& error) { return refused(error.popis().czech()); }

    /// The answer when a result exceeds the frame limit.
    static ToolOutcome tooLong() { return refused("Výsledek je na přenos příliš dlouhý."); }
};

/// A tool, declared once: its descriptor, its arguments, when it is offered, what runs.
struct Tool {
    ToolDescriptor descriptor;
    std::vector<ArgumentRow> arguments; ///< the fields its record declares
    std::function<bool()> isOffered;
    std::function<Task<ToolOutcome>(ToolCall)> run;
    /// Whether the status names the tool, unless its name keeps it out. The phone is offered unnamed tools
    /// too.
    bool isInStatus = true;
};

/// `Record` is the type of its arguments (`ArgumentRecord.h`).
template <class Record>
Tool makeTool(ToolDescriptor descriptor, std::function<bool()> isOffered,
              std::function<Task<ToolOutcome>(Record arguments, ToolCall call)> run) {
    return {std::move(descriptor), listArguments<Record>(), std::move(isOffered),
            [run = std::move(run)](ToolCall call) {
                auto arguments = readArguments<Record>(call.arguments);
                return run(std::move(arguments), std::move(call));
            }};
}

} // namespace morvex

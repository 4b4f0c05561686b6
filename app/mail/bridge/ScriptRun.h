#pragma once

#include "app/mail/bridge/MailChyba.h"
#include "app/mail/bridge/MailZprava.h"
#include "shared/base/Error.h"
#include "shared/wire/JsonLimits.h"

#include <boost/json/fwd.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// What goes into one run of a script, and what comes out of it.
namespace morvex::scriptRun {

/// The most bytes of output that are kept: a message may be long, or made to be.
inline constexpr std::size_t longestOutput = jsonSizeLimit;
/// The most bytes of errors that are kept, of their end.
inline constexpr std::size_t longestErrors = std::size_t{16} * 1024;

/// A whole program that runs `body` with the parameters and ends in its result as JSON. The parameters are a
/// literal of JSON, so no text in them can become code.
std::string program(std::string_view body, const boost::json::object& parameters);

/// The output of a program that succeeded, a value of any kind of JSON with white space around it. Fails with
/// `MailChyba` if it is no `T`, which is a text, a list of texts or a list of messages.
template <class T> Result<T> result(std::string_view output);

extern template Result<std::string> result(std::string_view output);
extern template Result<std::vector<std::string>> result(std::string_view output);
extern template Result<std::vector<MailZprava>> result(std::string_view output);

/// The failure when the output cannot be understood.
MailChyba unreadable();

enum class End { byItself, atTimeLimit };

/// Why a program failed that wrote these errors.
MailChyba failure(std::string_view errors, End end);

} // namespace morvex::scriptRun

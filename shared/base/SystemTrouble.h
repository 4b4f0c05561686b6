#pragma once

#include "shared/base/Sentence.h"

namespace morvex {

/// What kept the system, the network or a server from doing what was asked of it, told apart as far as a
/// person would do something different about it. The one table of its words, whoever meets it.
enum class SystemTrouble {
    notFound,
    notFolder,
    isFolder,
    exists,
    notAllowed,
    readOnly,
    diskFull,
    quotaUsed,
    tooLarge,
    linkNotFollowed,
    nameTooLong,
    badPath,
    leadsElsewhere,
    inUse,
    exhausted,
    deviceFailed,
    notSupported,
    notExecutable,
    callTooLong,
    serviceMissing,
    serviceSilent,
    badAddress,
    unknownName,
    unreachable,
    refused,
    timedOut,
    cutOff,
    badAnswer,
    tlsRefused,
    certificateUntrusted,
    certificateExpired,
    certificateNotYetValid,
    certificateOtherName,
    certificateInvalid,
    authoritiesUnreadable,
    other,
};

/// With the remedy where there is one.
Sentence popis(SystemTrouble trouble);

/// Of an errno, of a file or of a socket.
SystemTrouble troubleOf(int code);

} // namespace morvex

#pragma once

#include "shared/base/Error.h"

#define MORVEX_JOIN_NAMES(a, b) a##b
#define MORVEX_UNIQUE_NAME(a, b) MORVEX_JOIN_NAMES(a, b)

/// `TRY(auto, value, expression)` in a function that returns a `Result`: declares `value`, or returns the
/// failure.
#define TRY(type, name, ...)                                                                                 \
    auto MORVEX_UNIQUE_NAME(tried, __LINE__) = (__VA_ARGS__);                                                \
    if (!MORVEX_UNIQUE_NAME(tried, __LINE__))                                                                \
        return std::unexpected(std::move(MORVEX_UNIQUE_NAME(tried, __LINE__)).error());                      \
    type name = *std::move(MORVEX_UNIQUE_NAME(tried, __LINE__))

/// `CHECK(expression)`: like `TRY`, without a value.
#define CHECK(...)                                                                                           \
    if (auto tried = (__VA_ARGS__); !tried) return std::unexpected(std::move(tried).error())

/// `CO_TRY(auto, value, co_await operation())`: `TRY` in a coroutine.
#define CO_TRY(type, name, ...)                                                                              \
    auto MORVEX_UNIQUE_NAME(tried, __LINE__) = (__VA_ARGS__);                                                \
    if (!MORVEX_UNIQUE_NAME(tried, __LINE__))                                                                \
        co_return std::unexpected(std::move(MORVEX_UNIQUE_NAME(tried, __LINE__)).error());                   \
    type name = *std::move(MORVEX_UNIQUE_NAME(tried, __LINE__))

/// `CO_CHECK(co_await operation())`: `CHECK` in a coroutine.
#define CO_CHECK(...)                                                                                        \
    if (auto tried = (__VA_ARGS__); !tried) co_return std::unexpected(std::move(tried).error())

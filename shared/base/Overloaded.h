#pragma once

namespace morvex {

/// One visitor of a variant from a lambda for each of its cases.
template <class... Lambdas> struct Overloaded : Lambdas... {
    using Lambdas::operator()...;
};

} // namespace morvex

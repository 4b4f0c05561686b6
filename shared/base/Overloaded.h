#pragma once

namespace morvex {

/// Combines lambdas into one visitor of a variant, one lambda for each alternative.
template <class... Lambdas> struct Overloaded : Lambdas... {
    using Lambdas::operator()...;
};

} // namespace morvex

#pragma once

namespace qrv::platform {

// Lambdas merged into one visitor for std::visit over a variant of draw ops
// or view nodes: one lambda per alternative, checked by the compiler.
template <class... F>
struct Overloaded : F... {
    using F::operator()...;
};
template <class... F>
Overloaded(F...) -> Overloaded<F...>;

}  // namespace qrv::platform

// Where Qt calls the host. Nothing may be thrown through Qt's own frames, which are not made for it.
#pragma once

#include <functional>

namespace qv::qt {

/// Tells of the exception being handled; throws nothing itself.
using FailureHandler = std::function<void()>;

/// Runs what Qt has asked for. A failure is told, and the answer is then the default one of its type.
template <class Body>
auto guarded(FailureHandler const& failed, Body const& body) noexcept -> decltype(body()) {
    try {
        return body();
    } catch (...) {
        failed();
        return decltype(body())();
    }
}

/// The same where nobody needs to be told.
template <class Body>
auto guarded(Body const& body) noexcept -> decltype(body()) {
    try {
        return body();
    } catch (...) {
        return decltype(body())();
    }
}

} // namespace qv::qt

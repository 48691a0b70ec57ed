// What most tests of the engine need: a formula's value, and an error with its text and place.
#pragma once

#include "qvgraph/qvExpression.h"

#include <string>

namespace qv::test {

/// Compiles a text into a new slot, which becomes the highest.
inline void compile(qvExpression& engine, std::string const& text) {
    engine.Compile(text);
}

inline Variant value_of(qvExpression& engine, std::string const& text) {
    compile(engine, text);
    return engine.Value(-1);
}

inline Variant value_of(std::string const& text) {
    qvExpression engine;
    return value_of(engine, text);
}

/// "6 Div by zero", "" without an error.
inline std::string error_of(qvExpression const& engine) {
    if (engine.ErrorCode() == 0) return engine.ErrorDescription();
    return std::to_string(engine.ErrorCode()) + " " + engine.ErrorDescription();
}

inline std::string repeated(std::string const& text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i) result += text;
    return result;
}

} // namespace qv::test

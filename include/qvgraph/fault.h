// Faults: failures with a number and a text, as the host sees them in ErrorMsg or as the error of a call.
#pragma once

#include "qvgraph/export.h"

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace qv {

enum class FaultNumber : std::int32_t {
    InvalidProcedureCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    DivisionByZero = 11,
    TypeMismatch = 13,
    FileNotFound = 53,
    DeviceError = 57,
    DiskFull = 61,
    PermissionDenied = 70,
    PathFileAccess = 75,
    PathNotFound = 76,
    ObjectNotSet = 91,
    InvalidUseOfNull = 94,
    UnknownMember = 438,
    WrongArgumentCount = 450,
    PrinterError = 482,
    CannotOpenClipboard = 521,
    InternalError = 999,
};

/// A failure that is thrown.
struct QV_EXPORT Fault : std::exception {
    std::int32_t number;     ///< a FaultNumber
    std::string description; ///< what, where and what to do

    /// Of this number, with a text of its own.
    Fault(FaultNumber fault_number, std::string text)
        : number(static_cast<std::int32_t>(fault_number)), description(std::move(text)) {}
    char const* what() const noexcept override { return description.c_str(); } ///< the description
};

/// The standard text of a fault number, e.g. "Subscript out of range" for 9.
QV_EXPORT std::string_view fault_text(FaultNumber number);

/// Throws the Fault of this number with its standard text.
[[noreturn]] QV_EXPORT void raise_fault(FaultNumber number);
/// The same with a text of its own, which says what, where and what to do.
[[noreturn]] QV_EXPORT void raise_fault(FaultNumber number, std::string description);

/// Throws fault 9 with what was asked for and what there is: "axis 7 was asked for, there are 0 to 2".
[[noreturn]] QV_EXPORT void raise_subscript_fault(std::string_view what, std::int64_t asked,
                                                  std::int64_t first, std::int64_t last);

} // namespace qv

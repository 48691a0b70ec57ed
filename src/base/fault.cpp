#include "base/fault_report.h"

#include <array>
#include <initializer_list>
#include <new>

namespace qv {
namespace {

struct FaultRow {
    FaultNumber number;
    std::string_view text;
};

constexpr std::array fault_rows{
    FaultRow{FaultNumber::InvalidProcedureCall, "Invalid procedure call or argument"},
    FaultRow{FaultNumber::Overflow, "Overflow"},
    FaultRow{FaultNumber::OutOfMemory, "Out of memory"},
    FaultRow{FaultNumber::SubscriptOutOfRange, "Subscript out of range"},
    FaultRow{FaultNumber::DivisionByZero, "Division by zero"},
    FaultRow{FaultNumber::TypeMismatch, "Type mismatch"},
    FaultRow{FaultNumber::FileNotFound, "File not found"},
    FaultRow{FaultNumber::DeviceError, "Device I/O error"},
    FaultRow{FaultNumber::DiskFull, "Disk full"},
    FaultRow{FaultNumber::PermissionDenied, "Permission denied"},
    FaultRow{FaultNumber::PathFileAccess, "Path/File access error"},
    FaultRow{FaultNumber::PathNotFound, "Path not found"},
    FaultRow{FaultNumber::ObjectNotSet, "Object not set"},
    FaultRow{FaultNumber::InvalidUseOfNull, "Invalid use of Null"},
    FaultRow{FaultNumber::UnknownMember, "Object doesn't support this property or method"},
    FaultRow{FaultNumber::WrongArgumentCount, "Wrong number of arguments"},
    FaultRow{FaultNumber::PrinterError, "Printer error"},
    FaultRow{FaultNumber::CannotOpenClipboard, "Can't open Clipboard"},
    FaultRow{FaultNumber::InternalError, "Internal Error"},
};

/// Calls `what(number, description)` with what any exception is told as.
template <class What>
auto tell(std::exception_ptr const& failure, What what) {
    auto const standard = [&](FaultNumber number) {
        return what(static_cast<std::int32_t>(number), fault_text(number));
    };
    try {
        std::rethrow_exception(failure);
    } catch (Fault const& fault) {
        return what(fault.number, fault.description);
    } catch (std::bad_alloc const&) {
        return standard(FaultNumber::OutOfMemory);
    } catch (std::exception const& other) {
        return what(static_cast<std::int32_t>(FaultNumber::InvalidProcedureCall), other.what());
    } catch (...) {
        return standard(FaultNumber::InvalidProcedureCall);
    }
}

void write(std::string& text, std::initializer_list<std::string_view> parts) {
    text.clear();
    for (std::string_view const part : parts) text += part;
}

} // namespace

std::string_view fault_text(FaultNumber number) {
    for (FaultRow const& row : fault_rows)
        if (row.number == number) return row.text;
    return "Unknown error";
}

void raise_fault(FaultNumber number) {
    throw Fault(number, std::string(fault_text(number)));
}

void raise_fault(FaultNumber number, std::string description) {
    throw Fault(number, std::move(description));
}

void raise_subscript_fault(std::string_view what, std::int64_t asked, std::int64_t first, std::int64_t last) {
    std::string text(fault_text(FaultNumber::SubscriptOutOfRange));
    text += ": ";
    text += what;
    text += " " + std::to_string(asked) + " was asked for, there ";
    if (last < first)
        text += "is none";
    else if (last == first)
        text += "is only " + std::to_string(first);
    else
        text += "are " + std::to_string(first) + " to " + std::to_string(last);
    raise_fault(FaultNumber::SubscriptOutOfRange, std::move(text));
}

Fault as_fault(std::exception_ptr const& failure) {
    return tell(failure, [](std::int32_t number, std::string_view description) {
        return Fault(static_cast<FaultNumber>(number), std::string(description));
    });
}

FaultReport FaultReport::with_room() {
    constexpr std::size_t usual_length = 250;
    FaultReport report;
    report.Source.reserve(usual_length);
    report.Description.reserve(usual_length);
    return report;
}

std::int32_t write_report(FaultReport& report, std::string_view library, std::string_view procedure,
                          std::exception_ptr const& failure) noexcept {
    constexpr auto passed_over = static_cast<std::int32_t>(FaultNumber::InvalidUseOfNull);
    try {
        return tell(failure, [&](std::int32_t number, std::string_view description) {
            if (number == passed_over) return 0;
            write(report.Source,
                  {"Error ", std::to_string(number), " has occured in ", library, ", ", procedure});
            write(report.Description, {description});
            return number;
        });
    } catch (std::exception const&) { // these texts are short enough to need no memory
        write(report.Source, {"Error 7"});
        write(report.Description, {fault_text(FaultNumber::OutOfMemory)});
        return static_cast<std::int32_t>(FaultNumber::OutOfMemory);
    }
}

} // namespace qv

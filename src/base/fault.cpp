#include "base/fault.h"

#include <array>
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

Fault as_fault(std::exception_ptr const& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (Fault const& fault) {
        return fault;
    } catch (std::bad_alloc const&) {
        return {FaultNumber::OutOfMemory, std::string(fault_text(FaultNumber::OutOfMemory))};
    } catch (std::exception const& other) {
        return {FaultNumber::InvalidProcedureCall, other.what()};
    } catch (...) {
        return {FaultNumber::InvalidProcedureCall,
                std::string(fault_text(FaultNumber::InvalidProcedureCall))};
    }
}

std::optional<FaultReport> fault_report(std::string_view procedure, std::exception_ptr const& failure) {
    Fault fault = as_fault(failure);
    if (fault.number == static_cast<std::int32_t>(FaultNumber::InvalidUseOfNull)) return std::nullopt;
    return FaultReport{"Error " + std::to_string(fault.number) + " has occured in " + std::string(procedure),
                       std::move(fault.description)};
}

} // namespace qv

// Arrays of doubles that expressions read by name: their definition, elements and use in programs.
#pragma once

#include "expression/engine.h"
#include "qvgraph/qvExpression.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qv::expression {

/// Elements that all arrays of one engine may have together; an array beyond it has none (256 MiB).
constexpr std::size_t max_array_elements = std::size_t{32} * 1024 * 1024;

using ArrayIndices = std::array<std::int32_t, max_dimensions>;

/// Defines an array from a text such as "A(10, 5)", all elements 0; error 12 for what is none.
void DefineArray(Engine& engine, std::string text);
/// Stores an array under a name with the first `dimensions` bounds of `source` and its values.
void SetArrayValues(Engine& engine, std::string_view name, int dimensions, qvArray const& source);
/// The element to store into, or none where the array or an index above its bound does not exist; a negative
/// index is fault 9.
double* array_place(Engine& engine, int number, ArrayIndices const& indices);
/// One element, or a 16-bit 0 when there is none.
Variant GetArrayValue(Engine& engine, int number, ArrayIndices const& indices);

/// Minus the number of the first array of this name, 0 when there is none.
OpcodeNumber array_opcode(Engine const& engine, std::string_view name);
/// The record of array `number`, which counts from 1; fault 9 when there is none.
ArrayRecord& array_record(Engine& engine, int number);
std::int16_t array_dimensions(Engine& engine, int number);
/// "A(10, 5)"; "" when there is no such array.
std::string ArrayNameWithDims(Engine const& engine, int number);
/// The element at these indices; fault 9 when one is out of bounds.
double& array_element(ArrayRecord& record, std::span<std::int32_t const> indices);

} // namespace qv::expression

#include "expression/arrays.h"

#include "base/convert.h"
#include "base/text.h"
#include "expression/decimal.h"
#include "expression/tokenizer.h"

#include <algorithm>

namespace qv::expression {
namespace {

// Arrays that both the public count and the table know.
int known_arrays(Engine const& engine) {
    return std::min<int>(engine.NumArrays, static_cast<int>(engine.arrays.size()) - 1);
}

ArrayRecord& found_or_appended(Engine& engine, std::string_view name) {
    if (const OpcodeNumber number = array_opcode(engine, name); number < 0)
        return array_record(engine, -number);
    engine.NumArrays = to_i16(engine.NumArrays + 1);
    engine.arrays.resize(static_cast<std::size_t>(std::max<int>(engine.NumArrays, 0)) + 1);
    return engine.arrays.back();
}

std::size_t elements_of_all(Engine const& engine) {
    std::size_t count = 0;
    for (ArrayRecord const& record : engine.arrays) count += record.values.size();
    return count;
}

// A bound below 0 or a size beyond what the engine may hold leaves the array without elements.
void allocate(Engine& engine, ArrayRecord& record) {
    record.values = {};
    const std::size_t room = max_array_elements - elements_of_all(engine);
    std::size_t count = 1;
    for (int k = 1; k <= record.dimensions; ++k) {
        const std::int16_t bound = record.upper_bounds[static_cast<std::size_t>(k)];
        if (bound < 0) raise_fault(FaultNumber::SubscriptOutOfRange);
        count *= static_cast<std::size_t>(bound) + 1; // at most 2^60
    }
    if (count > room) raise_fault(FaultNumber::OutOfMemory);
    record.values.assign(count, 0);
}

std::int16_t bound_in(std::string_view text) {
    auto const value = leading_value(text);
    if (!value) raise_fault(FaultNumber::Overflow);
    return to_i16(*value);
}

void define(Engine& engine, std::string_view name, std::span<std::string_view const> bounds) {
    ArrayRecord& record = found_or_appended(engine, name);
    record.name = name;
    record.dimensions = static_cast<std::int16_t>(bounds.size());
    record.upper_bounds.fill(0);
    for (std::size_t k = 0; k < bounds.size(); ++k)
        resume_after([&] { record.upper_bounds[k + 1] = bound_in(bounds[k]); });
    resume_after([&] { allocate(engine, record); });
}

bool above_bounds(ArrayRecord const& record, ArrayIndices const& indices) {
    for (std::size_t k = 0; k < static_cast<std::size_t>(record.dimensions); ++k)
        if (indices[k] > record.upper_bounds[k + 1]) return true;
    return false;
}

std::span<std::int32_t const> used_indices(ArrayRecord const& record, ArrayIndices const& indices) {
    return std::span(indices).first(static_cast<std::size_t>(record.dimensions));
}

void copy_values(ArrayRecord& record, qvArray const& source) {
    if (static_cast<std::size_t>(record.dimensions) != source.UpperBounds.size()
        || record.values.size() != source.Values.size())
        raise_fault(FaultNumber::SubscriptOutOfRange);
    record.values = source.Values;
}

constexpr std::size_t max_array_name_bytes = std::size_t{16} << 20; // all names together

// Names beyond what the engine may hold are an error.
bool has_room_for_name(Engine& engine, std::string_view name) {
    std::size_t bytes = name.size();
    for (ArrayRecord const& record : engine.arrays) bytes += record.name.size();
    if (bytes <= max_array_name_bytes) return true;
    record_fault(engine,
                 Fault(FaultNumber::OutOfMemory, "Out of memory: the names of all arrays may have 16 MiB"),
                 "DefineArray");
    return false;
}

constexpr std::string_view too_many_dimensions = ": Too many dimensions for array ";

} // namespace

void DefineArray(Engine& engine, std::string text) {
    if (text.size() > max_definition_bytes)
        return set_error(engine, ErrorNumber::InvalidArray, "an array definition may have 256 KiB");
    text = StripComments(text);
    auto const open = text.find('(');
    if (open == std::string::npos)
        return set_error(engine, ErrorNumber::InvalidArray, text + ": '(' expected for array definition.");
    const std::string name(trim(std::string_view(text).substr(0, open)));
    const std::string_view rest = std::string_view(text).substr(open + 1);
    auto const bounds = split(rest.substr(0, rest.find(')')), ",");
    if (bounds.size() > max_dimensions)
        return set_error(engine, ErrorNumber::InvalidArray, name + std::string(too_many_dimensions));
    if (has_room_for_name(engine, name)) resume_after([&] { define(engine, name, bounds); });
}

void SetArrayValues(Engine& engine, std::string_view name, int dimensions, qvArray const& source) {
    if (dimensions > max_dimensions)
        return set_error(engine, ErrorNumber::ReservedName,
                         std::string(name) + std::string(too_many_dimensions));
    if (!has_room_for_name(engine, name)) return;
    resume_after([&] {
        ArrayRecord& record = found_or_appended(engine, name);
        record.name = name;
        record.dimensions = static_cast<std::int16_t>(dimensions);
        if (dimensions == 0) return;
        record.upper_bounds.fill(0);
        for (int k = 0; k < dimensions; ++k)
            resume_after(
                [&] { record.upper_bounds[static_cast<std::size_t>(k) + 1] = at(source.UpperBounds, k); });
        resume_after([&] { allocate(engine, record); });
        resume_after([&] { copy_values(record, source); });
    });
}

double* array_place(Engine& engine, int number, ArrayIndices const& indices) {
    if (number < 1 || number > engine.NumArrays) return nullptr;
    ArrayRecord& record = array_record(engine, number);
    if (record.dimensions < 1 || above_bounds(record, indices)) return nullptr;
    return &array_element(record, used_indices(record, indices));
}

Variant GetArrayValue(Engine& engine, int number, ArrayIndices const& indices) {
    double const* const value = array_place(engine, number, indices);
    return value ? Variant(*value) : Variant(std::int16_t{0});
}

OpcodeNumber array_opcode(Engine const& engine, std::string_view name) {
    for (int k = 1; k <= known_arrays(engine); ++k)
        if (equals_ignoring_case(engine.arrays[static_cast<std::size_t>(k)].name, name))
            return static_cast<OpcodeNumber>(-k);
    return opcode::none;
}

ArrayRecord& array_record(Engine& engine, int number) {
    if (number < 1 || static_cast<std::size_t>(number) >= engine.arrays.size())
        raise_subscript_fault("array", number, 1, static_cast<std::int64_t>(engine.arrays.size()) - 1);
    return engine.arrays[static_cast<std::size_t>(number)];
}

std::int16_t array_dimensions(Engine& engine, int number) {
    return array_record(engine, number).dimensions;
}

std::string ArrayNameWithDims(Engine const& engine, int number) {
    if (number < 1 || number > known_arrays(engine)) return {};
    ArrayRecord const& record = engine.arrays[static_cast<std::size_t>(number)];
    std::string text = record.name + "(";
    for (int k = 1; k <= record.dimensions; ++k) {
        if (k > 1) text += ", ";
        text += std::to_string(record.upper_bounds[static_cast<std::size_t>(k)]);
    }
    return text + ")";
}

double& array_element(ArrayRecord& record, std::span<std::int32_t const> indices) {
    std::size_t place = 0;
    for (std::size_t k = 0; k < indices.size(); ++k) {
        const std::int16_t bound = record.upper_bounds[k + 1];
        if (indices[k] < 0 || indices[k] > bound) raise_subscript_fault("index", indices[k], 0, bound);
        place = place * (static_cast<std::size_t>(bound) + 1) + static_cast<std::size_t>(indices[k]);
    }
    return at(record.values, place, "element");
}

} // namespace qv::expression

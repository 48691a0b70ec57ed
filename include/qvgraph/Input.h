// Input: what a person does to the page and its scroll bars, as plain data. A host makes it of its own
// events.
#pragma once

#include "qvgraph/geometry.h"

#include <cstdint>
#include <variant>

namespace qv::host {

/// \name Buttons and modifier keys, alone or added up
/// \{
constexpr std::uint8_t left_button = 1;
constexpr std::uint8_t right_button = 2;
constexpr std::uint8_t middle_button = 4;
constexpr std::uint8_t shift_key = 1;
constexpr std::uint8_t ctrl_key = 2;
constexpr std::uint8_t alt_key = 4;
/// \}

enum class MouseKind : std::uint8_t { Press, Move, Release, DoubleClick };

/// A double click stands for the second press of a quick pair: press, release, double click, release.
struct MouseInput {
    MouseKind kind = MouseKind::Move; ///< what happened
    std::uint8_t button = 0;          ///< the one that changed; of a move, those that are held
    std::uint8_t shift = 0;           ///< modifier keys, added up
    Point place;                      ///< twips on the page picture; outside it while a button is held
    bool operator==(MouseInput const&) const = default;
};

/// Notches of the wheel; finer wheels give fractions.
struct WheelInput {
    double steps = 0;          ///< positive away from the person
    double sideways_steps = 0; ///< positive to the left
    std::uint8_t shift = 0;    ///< modifier keys, added up
    Point place;               ///< of the pointer, twips on the page picture
    bool operator==(WheelInput const&) const = default;
};

/// Keys that move about on the page.
enum class Key : std::uint8_t { None, Left, Right, Up, Down, Plus, Minus, Home, Tab, Escape };

/// Two fingers have moved apart (scale above 1) or together since the last such input.
struct PinchInput {
    double scale = 1; ///< above 0; above 1 apart
    Point place;      ///< between the fingers, twips
    bool operator==(PinchInput const&) const = default;
};

/// A key with a character, or one that moves about, or both. A character beyond 16 bits comes as two inputs,
/// its UTF-16 halves.
struct KeyInput {
    char16_t character = 0; ///< one of UTF-16, 0 for none
    std::uint8_t shift = 0; ///< modifier keys, added up
    Key key = Key::None;    ///< None: moves nothing
    bool operator==(KeyInput const&) const = default;
};

/// The pointer has gone from the page. What follows it goes too; the next input of the mouse brings it back.
struct LeaveInput {
    bool operator==(LeaveInput const&) const = default;
};

/// The keyboard comes to the page, or leaves it.
struct FocusInput {
    bool has_focus = false; ///< whether it has come
    bool operator==(FocusInput const&) const = default;
};

enum class Bar : std::uint8_t { HScroll1, VScroll1 };

/// A scroll bar stands at a new value because a person moved it.
struct ScrollInput {
    Bar bar = Bar::HScroll1; ///< which of the two
    std::int32_t value = 0;  ///< brought to 0 to its Max
    bool dragging = false;   ///< whether the thumb is still held
    bool operator==(ScrollInput const&) const = default;
};

struct Input
    : std::variant<MouseInput, WheelInput, PinchInput, KeyInput, FocusInput, ScrollInput, LeaveInput> {
    using variant::variant;
};

} // namespace qv::host

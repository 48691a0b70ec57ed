// The rules of styles.def: whether an argument is stored.
#pragma once

namespace qv::control {

struct Always {
    static constexpr bool writes_back = false;
    constexpr bool operator()(auto const&, auto const&) const { return true; }
};
constexpr Always always;

template <class Sentinel>
struct Unless {
    static constexpr bool writes_back = false;
    Sentinel sentinel;
    constexpr bool operator()(auto const&, auto const& value) const { return value != sentinel; }
};
template <class Sentinel>
constexpr Unless<Sentinel> unless(Sentinel sentinel) {
    return {sentinel};
}

/// An omitted second colour becomes the first one, which the caller sees in its own aggregate.
struct FollowsColor1 {
    static constexpr bool writes_back = true;
    constexpr bool operator()(auto& given, auto& color2) const {
        if (color2 == -1) color2 = given.Color1;
        return color2 != -1;
    }
};
constexpr FollowsColor1 follows_color1;

/// Stored by the step that follows the rows.
struct Later {
    static constexpr bool writes_back = false;
    constexpr bool operator()(auto const&, auto const&) const { return false; }
};
constexpr Later later;

} // namespace qv::control

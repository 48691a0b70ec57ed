// What the handles of a page have in common: it outlives the page, so that they can tell whether it is there.
#pragma once

#include <cstddef>
#include <cstdint>

namespace qv::document {

struct ControlState;

struct HandleAnchor {
    ControlState* page = nullptr;    // nullptr: gone
    std::uint64_t generation = 0;    // another one when graphs have been discarded
    mutable std::size_t holders = 1; // handles, and the page while it is there
};

inline void let_go(HandleAnchor const* anchor) {
    if (anchor && --anchor->holders == 0) delete anchor;
}

/// The page's own hold on its anchor.
class AnchorOfPage {
public:
    AnchorOfPage() = default;
    ~AnchorOfPage() {
        if (anchor_) anchor_->page = nullptr;
        let_go(anchor_);
    }
    AnchorOfPage(AnchorOfPage const&) = delete;
    AnchorOfPage& operator=(AnchorOfPage const&) = delete;

    /// Made for the first handle.
    HandleAnchor& of(ControlState& page) {
        if (!anchor_) anchor_ = new HandleAnchor{&page};
        return *anchor_;
    }
    /// From now on no handle leads to anything that was there before.
    void discard_handles() {
        if (anchor_) ++anchor_->generation;
    }

private:
    HandleAnchor* anchor_ = nullptr;
};

} // namespace qv::document

// Handle: what handles of graphs, axes, legends and data sets have in common. A handle leads to one record of
// a page for as long as that is there.
#pragma once

#include "qvgraph/export.h"

#include <cstdint>

namespace qv {

namespace document {
struct Graph;
struct HandleAnchor;
} // namespace document
namespace control {
struct HandleAccess;
}

/// Cheap to copy, and like a pointer: what it leads to can be changed through a constant handle too. To be
/// used on the thread of its page. Any member but those here throws fault 91 when the page is gone, when its
/// graphs were discarded by Reset, or when the handle is empty.
class QV_EXPORT Handle {
public:
    Handle() = default;                     ///< an empty one, to be assigned later
    Handle(Handle const& other);            ///< leads to the same
    Handle& operator=(Handle const& other); ///< leads to the same from now on
    ~Handle();

    /// Whether what it led to is not there any more, or the handle is empty.
    bool discarded() const;
    /// Whether it can be used.
    explicit operator bool() const { return !discarded(); }
    /// Whether both lead to the same.
    bool operator==(Handle const& other) const {
        return record_ == other.record_ && anchor_ == other.anchor_ && generation_ == other.generation_;
    }

private:
    friend struct control::HandleAccess;

    document::HandleAnchor* anchor_ = nullptr;
    std::uint64_t generation_ = 0;
    document::Graph* graph_ = nullptr;
    void* record_ = nullptr;
};

} // namespace qv

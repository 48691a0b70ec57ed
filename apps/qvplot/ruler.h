// Lengths of a page in millimetres: its sides and the texts on it.
#pragma once

#include "control/state_of.h"
#include "qvgraph/qvGraph.h"
#include "qvplot/look.h"

#include <memory>
#include <string_view>

namespace qv::plot {

inline double page_width(qvGraph const& page) {
    return control::state_of(page).PageWidth / static_cast<double>(control::state_of(page).UnitsPerMmX);
}
inline double page_height(qvGraph const& page) {
    return control::state_of(page).PageHeight / static_cast<double>(control::state_of(page).UnitsPerMmY);
}

/// Measures texts as the control draws them.
class Ruler {
public:
    explicit Ruler(qvGraph const& page)
        : surface_(control::state_of(page).host->make_surface()),
          twips_per_mm_(control::state_of(page).UnitsPerMmX) {}

    double height(PageFont const& font) const {
        use(font);
        return surface_->TextHeight("A") / twips_per_mm_;
    }
    double width(PageFont const& font, std::string_view text) const {
        use(font);
        return surface_->TextWidth(text) / twips_per_mm_;
    }

private:
    void use(PageFont const& font) const { surface_->state.font = {"Arial", font.size_points, false, false}; }
    std::unique_ptr<DrawSurface> surface_;
    double twips_per_mm_;
};

} // namespace qv::plot

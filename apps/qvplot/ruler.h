// Lengths of a page in millimetres: its sides and the texts on it.
#pragma once

#include "qvgraph/qvGraph.h"
#include "qvplot/look.h"

#include <memory>
#include <string_view>

namespace qv::plot {

inline double page_width(qvGraph const& page) {
    return page.state().PageWidth / static_cast<double>(page.state().UnitsPerMmX);
}
inline double page_height(qvGraph const& page) {
    return page.state().PageHeight / static_cast<double>(page.state().UnitsPerMmY);
}

/// Measures texts as the control draws them.
class Ruler {
public:
    explicit Ruler(qvGraph const& page)
        : surface_(page.state().host->make_surface()), twips_per_mm_(page.state().UnitsPerMmX) {}

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

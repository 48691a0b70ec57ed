// One sheet of a QPrinter.
#pragma once

#include "qvgraph/Services.h"

#include <QtGui/QPainter>

#include <memory>

class QPrinter;

namespace qv::qt {

/// Draws on a printer of the host's program, or on the system's default one. A sheet that was not ended is
/// given up.
class PagePrinter final : public host::Printer {
public:
    explicit PagePrinter(QPrinter& printer);
    explicit PagePrinter(std::unique_ptr<QPrinter> printer);
    ~PagePrinter() override;

    host::PaperSize paper() override;
    void set_orientation(host::PageOrientation orientation) override;
    void draw_picture(DrawSurface const& picture, Box const& place) override;
    void end_document() override;

private:
    std::unique_ptr<QPrinter> owned_;
    QPrinter& printer_;
    QPainter painter_;
};

/// One sheet of the system's default printer; nullptr where there is none.
std::unique_ptr<host::Printer> open_default_printer();

} // namespace qv::qt

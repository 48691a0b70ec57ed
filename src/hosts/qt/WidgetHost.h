// WidgetHost: the widget's side of the control: surfaces, child widgets, and events turned into signals.
#pragma once

#include "hosts/qt/PageView.h"
#include "hosts/qt/child_widgets.h"
#include "qvgraph/EventSink.h"
#include "qvgraph/Host.h"
#include "qvgraph/RasterSurface.h"
#include "qvgraph/qvGraph.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

class QPrinter;

namespace qv::qt {

class QvGraphWidget;

/// Turns references into values: what a slot changes does not come back.
class SignalSink final : public host::EventSink {
public:
    explicit SignalSink(QvGraphWidget& widget) : widget_(widget) {}

    void Click(double& X, double& Y) override;
    void DblClick(double& X, double& Y) override;
    void MouseMove(double& X, double& Y) override;
    void KeyPress(std::int16_t& KeyAscii, double& X, double& Y) override;
    void NewGraphInFront() override;
    void GraphScaleChanged() override;
    void GraphPositionChanged() override;
    void LegendPositionChanged() override;
    void MarkMoved(std::int16_t& Graph, std::int16_t& DataSet, double& X1, double& Y1, double& X2,
                   double& Y2) override;
    void ErrorMsg(std::string& Source, std::string& Description) override;

private:
    QvGraphWidget& widget_;
};

class WidgetHost final : public host::Host {
public:
    /// The handler takes what a person does; true means used up.
    WidgetHost(QvGraphWidget& widget, PageView::InputHandler const& handler);

    /// Tells of the exception being handled, as of a failure of the page.
    void report_failure() noexcept;

    qvGraph& control() { return *control_; }
    qvGraph const& control() const { return *control_; }
    PageView& page_view() { return page_view_; }
    ChildWidgets& children() { return children_; }
    raster::RasterSurface const& picture() const;
    /// An image on the picture's own pixels.
    QImage page() const;
    /// What continues the page beside it: the colour of the picture's last pixel.
    QRgb margin_color() const;

    /// Fits the control to the widget's size and screen; nothing happens while both stay the same.
    void fit();
    /// Style or font have changed, and with them the room that the child widgets take.
    void measure_children();
    /// The same of the read-out alone.
    void measure_read_out();

    /// PrintImage goes to this printer instead of the system's; nullptr: to the system's again.
    void set_printer(QPrinter* printer) { printer_ = printer; }

    /// Prints one sheet there, held as the printer holds it.
    void print_on(QPrinter& printer);

    std::unique_ptr<DrawSurface> make_surface() override;
    double scroll_bar_thickness() const override { return children_.scroll_bar_thickness(); }
    double label_height() const override { return children_.label_height(); }
    std::optional<double> read_out_width(std::string const& text) override {
        return children_.read_out_width(text);
    }
    void page_shown() override;
    void point_read(std::string const& text) override;
    void child_controls_changed() override;
    std::unique_ptr<host::Printer> default_printer() override;
    std::unique_ptr<host::Clipboard> open_clipboard() override;
    void save_picture(std::string const& file, host::PagePicture const& picture) override;
    void show_modal(gradient_picker::qvGradientForm2& form) override;
    std::optional<Color> choose_color(Color opened_at) override;
    void show_message(std::string const& text) override;

private:
    bool follow_density();
    void resize_control();

    QvGraphWidget& widget_;
    SignalSink signals_;
    // The child widgets go before the widget itself does, so that none calls back into what is left of it.
    PageView page_view_;
    ChildWidgets children_;
    std::shared_ptr<raster::FontLibrary> fonts_;
    double twips_per_pixel_;
    QSize size_;
    QRgb shown_margin_ = 0;
    QPrinter* printer_ = nullptr; // the program's
    std::unique_ptr<qvGraph> control_;
};

} // namespace qv::qt

#include "hosts/qt/GradientDialog.h"

#include "hosts/qt/child_widgets.h"
#include "hosts/qt/dialog_controls.h"
#include "hosts/qt/guarded.h"
#include "hosts/qt/screen_change.h"
#include "qvgraph/RasterSurface.h"

#include <QtCore/QEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>

#include <algorithm>
#include <array>

namespace qv::qt {
namespace {

// Below this the form would hide some of its controls.
constexpr double least_width_twips = 7440, least_height_twips = 3300;
constexpr int text_margin = 4;    // left of the read-outs, which begin at the window's edge
constexpr int longest_angle = 12; // characters; longer numbers could be beyond any angle
constexpr double smallest_points = 5, point_step = 0.25;

constexpr std::array style_names{QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Solid"),
                                 QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Lines"),
                                 QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Rectangles about the centre"),
                                 QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Rhombi"),
                                 QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Fan from the centre"),
                                 QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Rectangles about a corner"),
                                 QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Fan from a corner")};

void name(QWidget& widget, char const* text) {
    widget.setAccessibleName(GradientDialog::tr(text));
    widget.setObjectName(QLatin1String(text));
}

} // namespace

GradientDialog::GradientDialog(gradient_picker::qvGradientForm2& form, QWidget const& over)
    : form_(form), picker_(form.qvGradient1), given_font_(font()),
      preview_(this, picker_.Picture1, [this](host::MouseKind kind, std::uint8_t button, QPointF place) {
          const Point twips{place.x() * twips_a_unit(*this), place.y() * twips_a_unit(*this)};
          act([&] {
              if (kind == host::MouseKind::Move)
                  picker_.Picture1_MouseMove(button, twips);
              else
                  picker_.Picture1_MouseDown(button, twips);
          });
      }) {
    setWindowTitle(tr("Choose colours"));
    connect(&over, &QObject::destroyed, this, &QDialog::reject);
    make_swatches();
    fill(list1_, picker_.List1);
    fill(list2_, picker_.List3);
    angle_.setMaxLength(longest_angle);
    okay_.setDefault(true);
    name_widgets();
    listen_to_values();
    listen_to_clicks();
    order_tabs();
    setMinimumSize(in_units({0, 0, least_width_twips, least_height_twips}, twips_a_unit(*this)).size());
    resize(in_units({0, 0, form_.Width(), form_.Height()}, twips_a_unit(*this)).size());
    open_over(over);
    fit();
}

// The swatches are one row of choices: Tab enters it at the chosen one, arrows go through it.
void GradientDialog::make_swatches() {
    for (std::size_t i = 0; i < picker_.Picture2.size(); ++i) {
        Swatch& swatch = *swatches_.emplace_back(std::make_unique<Swatch>(this, picker_.Picture2[i]));
        choices_.addButton(&swatch);
        swatch.setToolTip(tr(style_names[i]));
        connect(&swatch, &QAbstractButton::clicked, this,
                [this, i] { act([&] { picker_.Picture2_Click(i); }); });
    }
}

void GradientDialog::name_widgets() {
    name(list1_, QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Color 1 by name"));
    name(list2_, QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Color 2 by name"));
    name(shade1_, QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Shade of color 1"));
    name(shade2_, QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Shade of color 2"));
    name(shift_, QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Shift of the middle"));
    name(angle_, QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Gradient angle, degrees"));
    name(preview_, QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Preview"));
    preview_.setAccessibleDescription(tr("A press or a drag sets the angle"));
    for (std::size_t i = 0; i < swatches_.size(); ++i) name(*swatches_[i], style_names[i]);
    for (QScrollBar* const bar : {&shade1_, &shade2_, &shift_}) bar->setFocusPolicy(Qt::StrongFocus);
    for (QLabel* const label : {&read_out1_, &read_out_shift_, &read_out2_}) {
        label->setTextFormat(Qt::PlainText);
        label->setContentsMargins(text_margin, 0, 0, 0);
        label->setAlignment(Qt::AlignLeft | Qt::AlignTop); // the bars cover the lower edge
    }
}

void GradientDialog::listen_to_values() {
    auto const on_bar = [this](QScrollBar& widget, host::ScrollBar& model) {
        connect(&widget, &QScrollBar::valueChanged, this, [this, &model](int value) {
            act([&] {
                model.Value = value;
                picker_.HScroll_Change();
            });
        });
    };
    on_bar(shade1_, picker_.HScroll1);
    on_bar(shade2_, picker_.HScroll2);
    on_bar(shift_, picker_.HScroll3);
    auto const on_list = [this](QListWidget& widget, host::ColorList& model, auto handler) {
        auto const chosen = [this, &widget, &model, handler] {
            act([&] {
                model.ListIndex = static_cast<std::int16_t>(widget.currentRow());
                handler();
            });
        };
        connect(&widget, &QListWidget::currentRowChanged, this, chosen);
        connect(&widget, &QListWidget::itemClicked, this, chosen); // on the line that is current already
    };
    on_list(list1_, picker_.List1, [this] { picker_.List1_Click(); });
    on_list(list2_, picker_.List3, [this] { picker_.List3_Click(); });
    connect(&angle_, &QLineEdit::textEdited, this, [this](QString const& typed) {
        act([&] {
            picker_.AngleText.Text = typed.toStdString();
            picker_.AngleText_Change();
        });
    });
}

void GradientDialog::listen_to_clicks() {
    auto const on_check = [this](QCheckBox& widget, host::CheckBox& model, auto handler) {
        connect(&widget, &QCheckBox::clicked, this, [this, &model, handler](bool checked) {
            act([&] {
                model.Value = checked;
                handler();
            });
        });
    };
    on_check(double_, picker_.Check1, [this] { picker_.Check1_Click(); });
    on_check(use_names_, picker_.Check2, [this] { picker_.Check2_Click(); });
    auto const on_click = [this](QPushButton& widget, auto handler) {
        connect(&widget, &QPushButton::clicked, this, [this, handler] { act(handler); });
    };
    on_click(color1_, [this] { picker_.Command1_Click(0); });
    on_click(color2_, [this] { picker_.Command1_Click(1); });
    on_click(okay_, [this] { form_.Command1_Click(); });
    on_click(cancel_, [this] { form_.Command2_Click(); });
}

void GradientDialog::order_tabs() {
    std::vector<QWidget*> order{&use_names_};
    for (auto const& swatch : swatches_) order.push_back(swatch.get());
    order.insert(order.end(), {&double_, &angle_, &list1_, &color1_, &list2_, &color2_, &shade1_, &shift_,
                               &shade2_, &okay_, &cancel_});
    for (std::size_t i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
    okay_.setFocus();
}

void GradientDialog::open_over(QWidget const& other) {
    setScreen(other.screen());
    const QRect window = other.window()->frameGeometry();
    QRect frame(QPoint(), size());
    frame.moveCenter(window.center());
    const QRect room = screen()->availableGeometry();
    move(std::clamp(frame.left(), room.left(), std::max(room.left(), room.right() - frame.width())),
         std::clamp(frame.top(), room.top(), std::max(room.top(), room.bottom() - frame.height())));
}

bool GradientDialog::event(QEvent* event) {
    if (may_change_density(*event)) attempt([this] { fit(); });
    if (event->type() == QEvent::ApplicationFontChange)
        attempt([this] {
            given_font_ = QApplication::font(this);
            choose_fonts();
        });
    return QDialog::event(event);
}

void GradientDialog::changeEvent(QEvent* event) {
    if (event->type() == QEvent::StyleChange) attempt([this] { choose_fonts(); });
    QDialog::changeEvent(event);
}

void GradientDialog::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    attempt([this] { fit(); });
}

// Lays the form out in the window's size, its pictures at the screen's density.
void GradientDialog::fit() {
    double const unit = twips_a_unit(*this), pixel = unit / devicePixelRatioF();
    auto const follow_density = [pixel](host::PictureBox& box) {
        if (box.picture) static_cast<raster::RasterSurface&>(*box.picture).set_twips_per_pixel(pixel, pixel);
    };
    follow_density(picker_.Picture1);
    std::ranges::for_each(picker_.Picture2, follow_density);
    form_.Form_Resize(width() * unit, height() * unit);
    choose_fonts();
    show_state();
}

// The desktop's font, made smaller where the stated places would cut a text; the lists' names are the
// longest.
void GradientDialog::choose_fonts() {
    auto const measure = [this](QStyle::PixelMetric metric) {
        return style()->pixelMetric(metric, nullptr, this);
    };
    int const frames = 2 * measure(QStyle::PM_DefaultFrameWidth);
    int const check_mark = measure(QStyle::PM_IndicatorWidth) + measure(QStyle::PM_CheckBoxLabelSpacing) + 2;
    // What hangs below a read-out's letters may touch the bar, and an angle's digits have none of it.
    double const read_out_height = picker_.HScroll1.Top - picker_.Label2.Top + 15;
    int const button_margin = measure(QStyle::PM_ButtonMargin);
    const TextRoom texts[] = {
        {caption(picker_.Check2.Caption), picker_.Check2.Width, read_out_height, check_mark},
        {caption(picker_.Check1.Caption), picker_.Check1.Width, read_out_height, check_mark},
        {QStringLiteral("-315"), picker_.AngleText.Width, picker_.AngleText.Height, frames + 4},
        {caption(picker_.Label1.Caption), picker_.Label1.Width, read_out_height, 0},
        {caption("Color1 = 16777215"), picker_.Label2.Width, read_out_height, text_margin},
        {caption("gShift = -0.00"), picker_.Label3.Width, read_out_height, text_margin},
        {caption(picker_.Command1[0].Caption), picker_.Command1[0].Width, picker_.Command1[0].Height,
         button_margin},
        {caption(form_.Command2.Caption), form_.Command2.Width, form_.Command2.Height, button_margin}};
    setFont(fitting_font(texts));

    int const beside_name = measure(QStyle::PM_ScrollBarExtent) + frames + color_mark_size
                            + 4 * (measure(QStyle::PM_FocusFrameHMargin) + 1);
    const QFontMetrics metrics(font());
    auto const longest = std::ranges::max(picker_.List1.items, {}, [&](host::ColorItem const& item) {
        return metrics.horizontalAdvance(QString::fromStdString(std::string(item.name)));
    });
    const TextRoom names[] = {{QString::fromStdString(std::string(longest.name)), picker_.List1.Width,
                               picker_.List1.Height, beside_name}};
    for (QListWidget* const list : {&list1_, &list2_}) list->setFont(fitting_font(names));
}

QFont GradientDialog::fitting_font(std::span<TextRoom const> texts) const {
    double const unit = twips_a_unit(*this);
    QFont tried = given_font_;
    for (double points = QFontInfo(given_font_).pointSizeF(); points >= smallest_points;
         points -= point_step) {
        tried.setPointSizeF(points);
        const QFontMetrics metrics(tried);
        bool const all_fit = std::ranges::all_of(texts, [&](TextRoom const& room) {
            return metrics.horizontalAdvance(room.text) + room.taken <= room.width_twips / unit
                   && metrics.height() <= room.height_twips / unit;
        });
        if (all_fit) break;
    }
    return tried;
}

void GradientDialog::run() {
    if (!failure_) exec();
    if (failure_) std::rethrow_exception(failure_);
}

void GradientDialog::give_up() noexcept {
    if (!failure_) failure_ = std::current_exception();
    reject();
}

template <class Body>
void GradientDialog::attempt(Body const& body) {
    guarded([this] { give_up(); }, body);
}

// Runs what a person has set off; afterwards the form is answered, or every widget shows its state.
template <class Action>
void GradientDialog::act(Action&& action) {
    attempt([&] {
        action();
        if (form_.Visible())
            show_state();
        else
            accept();
    });
}

void GradientDialog::show_state() {
    follow(use_names_, picker_.Check2);
    follow(double_, picker_.Check1);
    follow(angle_, picker_.AngleText);
    double const unit = twips_a_unit(*this);
    auto const follow_label = [unit](QLabel& widget, host::Label const& model) {
        follow(widget, model, unit);
        widget.setText(caption(model.Caption));
    };
    follow_label(degrees_, picker_.Label1);
    follow_label(read_out1_, picker_.Label2);
    follow_label(read_out_shift_, picker_.Label3);
    follow_label(read_out2_, picker_.Label4);
    follow(shade1_, picker_.HScroll1, unit);
    follow(shift_, picker_.HScroll3, unit);
    follow(shade2_, picker_.HScroll2, unit);
    follow(list1_, picker_.List1);
    follow(list2_, picker_.List3);
    follow(color1_, picker_.Command1[0]);
    follow(color2_, picker_.Command1[1]);
    follow(okay_, form_.Command1);
    follow(cancel_, form_.Command2);
    follow(preview_, picker_.Picture1);
    auto const chosen = static_cast<std::size_t>(std::abs(int{picker_.Style}));
    for (std::size_t i = 0; i < swatches_.size(); ++i) {
        follow(*swatches_[i], picker_.Picture2[i]);
        swatches_[i]->setChecked(i == chosen);
        swatches_[i]->setFocusPolicy(i == chosen ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

} // namespace qv::qt

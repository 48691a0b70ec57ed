// The gradient dialog with real widgets, driven by a person's hands inside its modal loop.
#include "widget.h"

#include "hosts/qt/child_widgets.h"
#include "hosts/qt/page_image.h"
#include "qvgraph/qvGradientForm2.h"

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QColorDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include <doctest/doctest.h>

#include <algorithm>
#include <functional>

namespace qv::test {
namespace {

using gradient_picker::GradientChoice;

gradient_picker::qvGradientForm2& form() {
    return gradient_picker::gradient_form();
}
gradient_picker::qvGradient& picker() {
    return form().qvGradient1;
}

/// Does one thing in each modal window that comes up; a window that nobody expects, or that stays, is closed.
class ModalHands {
public:
    using Action = std::function<void(QDialog& dialog)>;

    explicit ModalHands(std::vector<Action> actions) : actions_(std::move(actions)) {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { look(); });
        timer_.start(1);
    }
    ~ModalHands() { CHECK(done_ == actions_.size()); }

private:
    void look() {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible()) return;
        bool const seen = std::ranges::find(seen_, dialog) != seen_.end();
        if (seen && ++looks_ < looks_of_patience) return;
        if (seen || done_ == actions_.size()) {
            FAIL_CHECK("a dialog stays open, or is one too many");
            dialog->reject();
            return;
        }
        seen_.push_back(dialog);
        // Not from inside the timer's own event, for an action may open the next dialog.
        QMetaObject::invokeMethod(
            dialog, [action = actions_[done_++], dialog] { action(*dialog); }, Qt::QueuedConnection);
    }
    static constexpr int looks_of_patience = 10000;
    std::vector<Action> actions_;
    std::size_t done_ = 0;
    int looks_ = 0;
    std::vector<QDialog*> seen_;
    QTimer timer_;
};

template <class Widget>
Widget& part(QDialog& dialog, char const* name) {
    auto* const found = dialog.findChild<Widget*>(name);
    REQUIRE_MESSAGE(found != nullptr, name);
    return *found;
}

QAbstractButton& button(QDialog& dialog, char const* text) {
    for (auto* const one : dialog.findChildren<QAbstractButton*>())
        if (one->text() == text) return *one;
    REQUIRE_MESSAGE(false, text);
    return *dialog.findChild<QAbstractButton*>();
}

void click(QWidget& widget, QPoint place = {}) {
    QTest::mouseClick(&widget, Qt::LeftButton, {}, place);
}

/// A control in a window, and what GetGradient hands back after a person has done this in the dialog.
struct Asking {
    ShownWidget shown;
    GradientChoice got{7, 7, 7, 7, 7};
    QStringList errors;

    GradientChoice after(ModalHands::Action action) { return after_all({std::move(action)}); }
    GradientChoice after_all(std::vector<ModalHands::Action> actions) {
        const ModalHands hands(std::move(actions));
        shown.widget.control().GetGradient(got.Color1, got.Color2, got.Angle, got.Shift, got.Style);
        return got;
    }
    /// The picker as it opens the first time, but for the colours.
    void start_over() {
        after([](QDialog& dialog) {
            if (auto& names = dynamic_cast<QCheckBox&>(button(dialog, "Use color names")); names.isChecked())
                names.click();
            part<QAbstractButton>(dialog, "Lines").click();
            if (auto& turns = dynamic_cast<QCheckBox&>(button(dialog, "Double")); turns.isChecked())
                turns.click();
            for (char const* const bar : {"Shade of color 1", "Shade of color 2", "Shift of the middle"})
                part<QScrollBar>(dialog, bar).setValue(50);
            auto& angle = part<QLineEdit>(dialog, "Gradient angle, degrees");
            angle.selectAll();
            QTest::keyClicks(&angle, "0");
            button(dialog, "Okay").click();
        });
        CHECK(got.Style == 1);
        CHECK(got.Angle == 0);
        CHECK(got.Shift == 0);
    }
};

TEST_CASE("what a person does in the dialog comes back from GetGradient") {
    Asking asking;
    asking.start_over();
    auto const answer = asking.after([](QDialog& dialog) {
        CHECK(dialog.windowTitle() == "Choose colours");
        auto& names = dynamic_cast<QCheckBox&>(button(dialog, "Use color names"));
        names.setFocus();
        QTest::keyClick(&names, Qt::Key_Space);
        auto& first = part<QListWidget>(dialog, "Color 1 by name");
        CHECK(first.isVisible());
        CHECK_FALSE(button(dialog, "Color 1").isVisible());
        QTest::keyClicks(&first, "oran");
        CHECK(first.currentItem()->text() == "Orange");
        auto& second = part<QListWidget>(dialog, "Color 2 by name");
        second.scrollToTop();
        click(*second.viewport(), second.visualItemRect(second.item(2)).center()); // Aqua
        click(part<QAbstractButton>(dialog, "Rhombi"));
        button(dialog, "Double").click();
        QTest::keyClick(&part<QScrollBar>(dialog, "Shift of the middle"), Qt::Key_PageUp);
        part<QScrollBar>(dialog, "Shade of color 1").setSliderPosition(60);
        auto& angle = part<QLineEdit>(dialog, "Gradient angle, degrees");
        angle.selectAll();
        QTest::keyClicks(&angle, "-30");
        CHECK(angle.text() == "-30");
        click(button(dialog, "Okay"));
    });
    CHECK(answer == GradientChoice{rgb(0xFF, 0xA5, 0), rgb(0, 0xFF, 0xFF), -0.2F, 330, -3});
    CHECK(picker().HScroll1.Value == 60);
}

TEST_CASE("Enter is Okay; Escape and the window's frame are Cancel, and the edits stay") {
    Asking asking;
    asking.start_over();
    const GradientChoice chosen = asking.got;
    asking.after([](QDialog& dialog) {
        part<QAbstractButton>(dialog, "Fan from a corner").click();
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    CHECK(asking.got == GradientChoice{-1, -1, 0, 0, 1});
    asking.after([](QDialog& dialog) { dialog.close(); });
    CHECK(asking.got == GradientChoice{-1, -1, 0, 0, 1});
    asking.after([](QDialog& dialog) { click(button(dialog, "Cancel")); });
    CHECK(asking.got.Color1 == -1);
    asking.after([](QDialog& dialog) {
        CHECK(part<QAbstractButton>(dialog, "Fan from a corner").isChecked());
        auto& angle = part<QLineEdit>(dialog, "Gradient angle, degrees");
        angle.setFocus();
        QTest::keyClick(&angle, Qt::Key_Return);
    });
    CHECK(asking.got == GradientChoice{chosen.Color1, chosen.Color2, 0, 0, 6});
    Color color = 7;
    const ModalHands hands({[](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Enter); }});
    asking.shown.widget.control().GetColor(color);
    CHECK(color == chosen.Color1);
}

TEST_CASE("widgets stand where the form's model puts them, before and after a change of size") {
    Asking asking;
    asking.start_over();
    asking.after([](QDialog& dialog) {
        for (const QSize size : {dialog.size(), QSize(700, 400)}) {
            dialog.resize(size);
            QCoreApplication::processEvents();
            CHECK(form().Width() == size.width() * 15);
            CHECK(part<QWidget>(dialog, "Preview").geometry() == qt::in_units(picker().Picture1));
            CHECK(part<QScrollBar>(dialog, "Shade of color 2").geometry() == qt::in_units(picker().HScroll2));
            CHECK(button(dialog, "Okay").geometry() == qt::in_units(form().Command1));
            CHECK(part<QWidget>(dialog, "Lines").y() == 0);
            CHECK(part<QWidget>(dialog, "Rhombi").y() == 4);
        }
        part<QAbstractButton>(dialog, "Solid").click();
        CHECK_FALSE(button(dialog, "Double").isVisible());
        CHECK_FALSE(part<QScrollBar>(dialog, "Shade of color 2").isVisible());
        CHECK_FALSE(button(dialog, "Color 2").isVisible()); // it stands beyond the edge
        CHECK(part<QWidget>(dialog, "Preview").width() == 700 - 132 - 12);
        dialog.resize(1, 1);
        QCoreApplication::processEvents();
        CHECK(dialog.rect().contains(part<QWidget>(dialog, "Preview").geometry()));
        CHECK(dialog.rect().contains(button(dialog, "Cancel").geometry()));
        dialog.resize(496, 275);
        QCoreApplication::processEvents();
        dialog.reject();
    });
}

TEST_CASE("preview and swatches show the painter's pixels at the screen's density") {
    Asking asking;
    asking.start_over();
    asking.after([](QDialog& dialog) {
        part<QScrollBar>(dialog, "Shade of color 1").setValue(70);
        double const density = dialog.devicePixelRatioF();
        struct Row {
            char const* name;
            host::PictureBox const& box;
        };
        for (Row const& row :
             {Row{"Preview", picker().Picture1}, {"Fan from the centre", picker().Picture2[4]}}) {
            auto const& surface = dynamic_cast<raster::RasterSurface const&>(*row.box.picture);
            CHECK(surface.TwipsPerPixelX() == doctest::Approx(15 / density));
            const QImage seen =
                part<QWidget>(dialog, row.name).grab().toImage().convertToFormat(QImage::Format_RGB32);
            // Without the frame, which is one unit wide.
            int const frame = static_cast<int>(std::ceil(density));
            const QRect inner = QRect({0, 0}, seen.size().boundedTo({surface.width(), surface.height()}))
                                    .adjusted(frame, frame, -frame - 1, -frame - 1);
            CHECK(different_pixels(seen.copy(inner), qt::image_of(surface).copy(inner)) == 0);
        }
        dialog.reject();
    });
}

TEST_CASE("a press and a drag on the preview set the angle") {
    Asking asking;
    asking.start_over();
    asking.after([](QDialog& dialog) {
        auto& preview = part<QWidget>(dialog, "Preview");
        auto& angle = part<QLineEdit>(dialog, "Gradient angle, degrees");
        const QPoint centre = preview.rect().center();
        QTest::mousePress(&preview, Qt::LeftButton, {}, centre + QPoint(40, -40));
        CHECK(std::abs(angle.text().toInt() - 45) <= 1);
        QMouseEvent drag(QEvent::MouseMove, QPointF(centre - QPoint(60, 0)),
                         preview.mapToGlobal(QPointF(centre)), Qt::NoButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&preview, &drag);
        CHECK(std::abs(angle.text().toInt() - 180) <= 1);
        QTest::mouseRelease(&preview, Qt::LeftButton, {}, centre);
        CHECK(std::abs(angle.text().toInt() - 180) <= 1);
        dialog.reject();
    });
}

TEST_CASE("the colour chooser opens at the colour; only its OK changes anything") {
    Asking asking;
    asking.start_over();
    auto const choose = [](QColor const& color, bool okay) -> ModalHands::Action {
        return [=](QDialog& dialog) {
            auto& chooser = dynamic_cast<QColorDialog&>(dialog);
            chooser.setCurrentColor(color);
            okay ? chooser.accept() : chooser.reject();
        };
    };
    auto const press = [](char const* name) -> ModalHands::Action {
        return [name](QDialog& dialog) {
            button(dialog, name).click();
            QTest::keyClick(&dialog, Qt::Key_Return);
        };
    };
    const GradientChoice before = asking.got;
    asking.after_all({[&](QDialog& dialog) {
                          if (auto& names = dynamic_cast<QCheckBox&>(button(dialog, "Use color names"));
                              names.isChecked())
                              names.click();
                          press("Color 2")(dialog);
                      },
                      choose({10, 20, 30}, true)});
    CHECK(asking.got.Color2 == rgb(10, 20, 30));
    CHECK(asking.got.Color1 == before.Color1);
    asking.after_all({press("Color 2"), [&](QDialog& dialog) {
                          CHECK(dynamic_cast<QColorDialog&>(dialog).currentColor() == QColor(10, 20, 30));
                          choose({99, 99, 99}, false)(dialog);
                      }});
    CHECK(asking.got.Color2 == rgb(10, 20, 30));
}

TEST_CASE("a window closed for good under its dialog takes the dialog with it") {
    auto widget = std::make_unique<qt::QvGraphWidget>();
    widget->show();
    const ModalHands hands({[&](QDialog& dialog) {
        widget.reset();
        CHECK_FALSE(dialog.isVisible());
    }});
    Color color = 7;
    widget->control().GetColor(color);
    CHECK(color == 7);
    CHECK_FALSE(form().Visible());
}

TEST_CASE("a failure is told in a message box, and the dialog goes on") {
    Asking asking;
    asking.start_over();
    asking.after_all(
        {[](QDialog& dialog) {
             picker().AngleText.Text = std::string(60, '9');
             part<QScrollBar>(dialog, "Shift of the middle").setValue(40);
             auto& angle = part<QLineEdit>(dialog, "Gradient angle, degrees");
             angle.selectAll();
             QTest::keyClicks(&angle, "5");
             button(dialog, "Okay").click();
         },
         [](QDialog& dialog) {
             auto& box = dynamic_cast<QMessageBox&>(dialog);
             CHECK(box.text() == "Error 6 has occured in qvGradient.ocx, DrawGradient\nOverflow");
             CHECK(box.standardButtons() == (QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore));
             box.button(QMessageBox::Ignore)->click();
         }});
    CHECK(asking.got.Angle == 5);
    CHECK(asking.got.Shift == doctest::Approx(-0.2F));
}

TEST_CASE("every part is reached by Tab and has a name for those who hear it") {
    Asking asking;
    asking.start_over();
    asking.after([](QDialog& dialog) {
        dynamic_cast<QCheckBox&>(button(dialog, "Use color names")).click();
        QStringList reached;
        auto const name_of = [](QWidget const& widget) {
            auto const* const pressed = dynamic_cast<QAbstractButton const*>(&widget);
            return widget.accessibleName().isEmpty() && pressed ? pressed->text() : widget.accessibleName();
        };
        button(dialog, "Use color names").setFocus();
        for (int i = 0; i < 12 && dialog.focusWidget(); ++i) {
            reached.append(name_of(*dialog.focusWidget()));
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
        }
        CAPTURE(reached.join(", ").toStdString());
        CHECK(reached
              == QStringList{"Use color names", "Lines", "Double", "Gradient angle, degrees",
                             "Color 1 by name", "Color 2 by name", "Shade of color 1", "Shift of the middle",
                             "Shade of color 2", "Okay", "Cancel", "Use color names"});
        auto& swatch = part<QAbstractButton>(dialog, "Lines");
        swatch.setFocus();
        QTest::keyClick(&swatch, Qt::Key_Right);
        CHECK(picker().Style == 2);
        for (auto const* const child : dialog.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            INFO(child->metaObject()->className());
            bool const label = dynamic_cast<QLabel const*>(child) != nullptr;
            CHECK((label || !name_of(*child).isEmpty()));
        }
        button(dialog, "Use color names").click();
        dialog.reject();
    });
}

TEST_CASE("no text is cut, whatever the desktop's font") {
    Asking asking;
    asking.start_over();
    const QFont before = QApplication::font();
    for (int const points : {7, 9, 14, 24}) {
        CAPTURE(points);
        QFont font = before;
        font.setPointSize(points);
        QApplication::setFont(font);
        asking.after([&](QDialog& dialog) {
            for (char const* const text : {"Use color names", "Double", "Color 1", "Okay", "Cancel"}) {
                CAPTURE(text);
                auto const& widget = button(dialog, text);
                CHECK(widget.fontMetrics().horizontalAdvance(text) < widget.width());
            }
            for (auto const* const label : dialog.findChildren<QLabel*>()) {
                if (!label->isVisible()) continue;
                CAPTURE(label->text().toStdString());
                CHECK(label->fontMetrics().horizontalAdvance(label->text()) <= label->contentsRect().width());
            }
            dynamic_cast<QCheckBox&>(button(dialog, "Use color names")).click();
            auto const& list = part<QListWidget>(dialog, "Color 1 by name");
            CHECK(list.sizeHintForColumn(0) <= list.viewport()->width());
            dynamic_cast<QCheckBox&>(button(dialog, "Use color names")).click();
            dialog.reject();
        });
    }
    QApplication::setFont(before);
}

} // namespace
} // namespace qv::test

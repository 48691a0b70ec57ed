// GradientDialog: the gradient form with real widgets, laid out as the form's model says.
#pragma once

#include "hosts/qt/picture_widgets.h"
#include "qvgraph/qvGradientForm2.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>

#include <exception>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace qv::qt {

/// Run it while the form is shown. Okay is the default button; Escape and the window's frame act
/// as Cancel. What a person does goes to the form's handlers, and every widget then follows its model.
class GradientDialog final : public QDialog {
    Q_DECLARE_TR_FUNCTIONS(qv::qt::GradientDialog)

public:
    /// Opens in the middle of that widget's window, which does not own it.
    GradientDialog(gradient_picker::qvGradientForm2& form, QWidget const& over);

    /// Returns when the dialog is closed. What failed in an event or slot closes it, and is thrown here.
    void run();

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct TextRoom {
        QString text;
        double width_twips, height_twips;
        int taken; // of the width by other things than the text, in device-independent pixels
    };

    void make_swatches();
    void name_widgets();
    void listen_to_values();
    void listen_to_clicks();
    void order_tabs();
    void open_over(QWidget const& other);
    void fit();
    void choose_fonts();
    QFont fitting_font(std::span<TextRoom const> texts) const;
    void show_state();
    /// Keeps the exception being handled for `run` and closes the dialog.
    void give_up() noexcept;
    template <class Body>
    void attempt(Body const& body);
    template <class Action>
    void act(Action&& action);

    gradient_picker::qvGradientForm2& form_;
    gradient_picker::qvGradient& picker_;
    QFont given_font_;
    std::exception_ptr failure_;
    QCheckBox use_names_{this}, double_{this};
    QLineEdit angle_{this};
    QLabel degrees_{this}, read_out1_{this}, read_out_shift_{this}, read_out2_{this};
    QListWidget list1_{this}, list2_{this};
    QPushButton color1_{this}, color2_{this}, okay_{this}, cancel_{this};
    FocusScrollBar shade1_{Qt::Horizontal, this}, shade2_{Qt::Horizontal, this}, shift_{Qt::Horizontal, this};
    PictureView preview_;
    QButtonGroup choices_;
    std::vector<std::unique_ptr<Swatch>> swatches_;
};

} // namespace qv::qt

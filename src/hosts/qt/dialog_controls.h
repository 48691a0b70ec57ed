// The controls of a dialog as real widgets: each follows its model in place, state and text.
#pragma once

#include "qvgraph/ChildControls.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>

#include <string_view>

namespace qv::qt {

/// Side of the mark that shows a colour in a list, in device-independent pixels.
constexpr int color_mark_size = 10;

/// Twips of a device-independent pixel in a dialog: 96 of these an inch, or more where the desktop draws its
/// texts larger.
double twips_a_unit(QWidget const& dialog);

/// A text of a model in the person's language.
QString caption(std::string_view of_model);

/// Puts the lines of a list into its widget.
void fill(QListWidget& widget, host::ColorList const& list);

/// Their parent is the dialog.
void follow(QCheckBox& widget, host::CheckBox const& model);
void follow(QLineEdit& widget, host::TextBox const& model);
void follow(QListWidget& widget, host::ColorList const& model);
void follow(QPushButton& widget, host::PushButton const& model);
void follow(QWidget& widget, host::PictureBox const& model);

} // namespace qv::qt

// The same in a window: drag a box to zoom, turn the wheel, drag the legend.
#include <qvgraph/QvGraphWidget.h>
#include <qvgraph/qvGraph.h>

#include <QtWidgets/QApplication>

#include <cmath>
#include <iostream>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    qv::qt::QvGraphWidget widget;
    QObject::connect(&widget, &qv::qt::QvGraphWidget::ErrorMsg,
                     [](QString const& source, QString const& description) {
                         std::cerr << source.toStdString() << ": " << description.toStdString() << "\n";
                     });
    widget.setWindowTitle("A damped oscillation");
    widget.resize(800, 500);

    qv::qvGraph& page = widget.control();
    page.UseLook("light");
    auto graph = page.graph("A damped oscillation");
    auto line = graph.line("amplitude");
    for (double t = 0; t <= 10; t += 0.01) line.add(t, std::exp(-t / 4) * std::cos(5 * t));
    page.Refresh();

    widget.show();
    return QApplication::exec();
}

// A damped oscillation as a picture and as a page in shapes.
#include <qvgraph/HeadlessHost.h>
#include <qvgraph/qvGraph.h>

#include <cmath>

int main() {
    qv::headless::HeadlessHost host({800, 500}); // a page in memory, in pixels
    qv::qvGraph& page = host.control();

    page.NewGraph("A damped oscillation");
    page.SelectXaxis();
    page.AxisTitle("time / s");
    page.SelectYaxis();
    page.AxisTitle("amplitude / mm");

    page.NewDataSet("amplitude");
    page.DataSymbol(0);                                 // no symbols, only a line
    page.DataLine({.Color = 0xB45A1E, .Thickness = 2}); // colours are 0xBBGGRR
    for (double t = 0; t <= 10; t += 0.01) page.AddDataPoint(t, std::exp(-t / 4) * std::cos(5 * t));

    page.Refresh();
    host.save("oscillation.png");
    host.save("oscillation.svg"); // .pdf and .bmp go the same way
}

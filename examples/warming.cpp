// The picture at the head of README.md: carbon dioxide in the air, and how warm the globe has become.
#include <qvgraph/HeadlessHost.h>
#include <qvgraph/looks.h>

#include <fstream>

/// Calls take(year, value) for the first two columns of a file of examples/data.
void read(std::string const& file, auto take) {
    std::ifstream csv(file);
    std::string line;
    for (std::getline(csv, line); std::getline(csv, line);) {
        double const month = line[4] == '-' ? std::stod(line.substr(5)) : 6.5;
        take(std::stod(line) + (month - 0.5) / 12, std::stod(line.substr(line.find(',') + 1)));
    }
}

int main(int argc, char** argv) {
    std::string const data = argc > 2 ? argv[2] : "examples/data";
    qv::headless::HeadlessHost host({1000, 420});
    qv::qvGraph& page = host.control();
    page.UseLook("light");
    auto const palette = qv::look("light").palette;

    auto air = page.graph("Carbon dioxide at Mauna Loa", {.left = 0, .width = 50});
    air.x_axis({.title = "data: Scripps CO_{2} Program, CC BY 4.0"});
    air.y_axis({.title = "CO_{2}, parts per million"});
    auto months = air.line("monthly mean");
    read(data + "/co2-concentration.csv", [&](double year, double ppm) { months.add(year, ppm); });
    air.function("parabola", "314.45 + 0.7558*(x-1958) + 0.01308*(x-1958)^2", {.line_thickness = 2});

    auto globe = page.graph("The globe grows warmer", {.left = 50, .width = 50});
    globe.x_axis({.title = "data: NASA GISS"});
    globe.y_axis({.title = "°C above the mean of 1951 to 1980"});
    auto cold = globe.bars("colder years", {.color = palette[0], .bar_width = 0.8});
    auto warm = globe.bars("warmer years", {.color = palette[3], .bar_width = 0.8});
    read(data + "/global-temp.csv", [&](double year, double t) { (t < 0 ? cold : warm).add(year, t); });
    page.Refresh();
    host.save(argc > 1 ? argv[1] : "warming.png");
}

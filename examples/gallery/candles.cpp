// Candles of a year of trading days: weekends and holidays take no room, because the days are the categories
// of the axis, and the volumes stand below the prices. At the bottom the last weeks, as bars with two ticks.
#include "example.h"

#include <algorithm>
#include <cmath>
#include <vector>

using namespace qv::example;

namespace {

constexpr double day = 86400;
constexpr double first_day = 1735776000; // Thursday, 2 January 2025, in UTC

struct Market {
    std::vector<double> time, open, high, low, close, volume;

    void trade(double when, double noise, double price) {
        double const before = close.empty() ? price : close.back();
        time.push_back(when);
        open.push_back(before + 0.4 * noise);
        close.push_back(price);
        high.push_back(std::max(open.back(), price) + 0.5 + std::abs(noise));
        low.push_back(std::min(open.back(), price) - 0.5 - std::abs(0.7 * noise));
        volume.push_back(4000 + 2500 * std::abs(price - before) + 900 * std::sin(when / day));
    }
};

Market market(int days) {
    Market made;
    unsigned seed = 7;
    double price = 84;
    for (int i = 0; i < days; ++i) {
        int const weekday = (i + 4) % 7; // 0 is Sunday
        if (weekday == 0 || weekday == 6) continue;
        seed = seed * 1103515245 + 12345;
        double const noise = static_cast<double>(seed >> 16 & 0x7FFF) / 16384 - 1;
        price += 1.6 * noise + 0.35 * std::sin(i / 23.0);
        made.trade(first_day + i * day, noise, price);
    }
    return made;
}

qv::DataHandle prices(qv::qvGraph& page, char const* title, float top, float height, int days) {
    auto const graph = page.graph(title, {.top = top, .width = 100, .height = height});
    graph.x_axis({.time = true, .categories = true});
    graph.y_axis({.title = "price"});
    auto const candles = graph.candles("Prices");
    Market const traded = market(days);
    candles.add_candles(traded.time, traded.open, traded.high, traded.low, traded.close, traded.volume);
    return candles;
}

} // namespace

void draw(qv::qvGraph& page) {
    prices(page, "Half a year of prices", 0, 60, 182).show_volume({.title = "volume", .si_prefix = true});
    prices(page, "Six weeks of prices", 60, 40, 42).candle_style(1);
}

int main(int argc, char** argv) {
    return run(argc, argv, "candles", draw);
}

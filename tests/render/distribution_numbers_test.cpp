// The numbers of histograms and box plots against their definitions, written down plainly. They are those of
// numpy: np.quantile(v, share) (its default, "linear"), np.histogram(v, bins) with a number, edges or "fd",
// and of matplotlib: cbook.boxplot_stats(v).
#include "render/kinds/box_statistics.h"
#include "render/kinds/histogram_bins.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <random>

using namespace qv::render;

namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double most = std::numeric_limits<double>::max();
constexpr double close = 1e-12;

using Column = std::vector<double>;

/// In pieces of unequal length, as blocks of points are.
struct InPieces {
    std::vector<std::span<double const>> pieces;

    explicit InPieces(Column const& column) {
        std::span<double const> left(column);
        for (std::size_t length = 32; !left.empty(); length = std::min<std::size_t>(2 * length, 8192)) {
            pieces.push_back(left.first(std::min(length, left.size())));
            left = left.subspan(pieces.back().size());
        }
    }
};

Bins bins_of(Column const& column, BinRule const& rule = {}) {
    return histogram_bins(InPieces(column).pieces, rule);
}

/// Columns of all sizes and shapes, some with ties, some so long that their quantiles are looked for by a
/// sample.
Column random_column(unsigned number) {
    std::mt19937 random(number);
    std::normal_distribution<double> normal;
    std::uniform_real_distribution<double> even(-5, 5);
    std::exponential_distribution<double> waiting(0.3);
    std::cauchy_distribution<double> wild;
    std::array<std::function<double()>, 6> const shapes{[&] { return normal(random); },
                                                        [&] { return even(random); },
                                                        [&] { return waiting(random); },
                                                        [&] { return std::clamp(wild(random), -1e4, 1e4); },
                                                        [&] { return std::round(4 * normal(random)); },
                                                        [&] { return 1e9 + normal(random); }};
    auto const& shape = shapes[number % shapes.size()];
    Column column(number % 40 == 7 ? 150'000 + random() % 50'000 : 1 + random() % 2000);
    std::ranges::generate(column, shape);
    if (number % 5 == 0) std::ranges::sort(column);
    return column;
}

double quantile(Column const& sorted, double share) {
    long double const position =
        static_cast<long double>(share) * static_cast<long double>(sorted.size() - 1);
    auto const lower = static_cast<std::size_t>(position);
    std::size_t const upper = std::min(lower + 1, sorted.size() - 1);
    long double const way = position - static_cast<long double>(lower);
    return static_cast<double>((1 - way) * static_cast<long double>(sorted[lower])
                               + way * static_cast<long double>(sorted[upper]));
}

bool near(double one, double other) {
    return std::abs(one - other) <= close * std::max(1.0, std::abs(other));
}

/// How many bins do not hold what lies between their edges, the last one with its upper edge.
int wrong_counts(Bins const& bins, Column const& sorted) {
    int wrong = 0;
    for (std::size_t i = 0; i < bins.size(); ++i) {
        auto const from = std::ranges::lower_bound(sorted, bins.edges[i]);
        auto const to = i + 1 == bins.size() ? std::ranges::upper_bound(sorted, bins.edges[i + 1])
                                             : std::ranges::lower_bound(sorted, bins.edges[i + 1]);
        wrong += static_cast<std::ptrdiff_t>(bins.count(i)) != to - from;
    }
    return wrong;
}

std::size_t bins_by_rule(Column const& sorted) {
    double const spread = quantile(sorted, 0.75) - quantile(sorted, 0.25);
    double const width = 2 * spread / std::cbrt(static_cast<double>(sorted.size()));
    return static_cast<std::size_t>(std::ceil((sorted.back() - sorted.front()) / width));
}

} // namespace

TEST_CASE("200 random columns have the bins and quartiles of their definitions") {
    constexpr std::array shares{0.0, 0.25, 0.333, 0.5, 0.75, 0.9, 1.0};
    for (unsigned number = 0; number < 200; ++number) {
        CAPTURE(number);
        const Column column = random_column(number);
        Column sorted = column;
        std::ranges::sort(sorted);
        auto const found = quantiles(InPieces(column).pieces, column.size(), shares);
        for (std::size_t i = 0; i < shares.size(); ++i) CHECK(near(found[i], quantile(sorted, shares[i])));

        const Bins by_rule = bins_of(column);
        if (quantile(sorted, 0.75) > quantile(sorted, 0.25))
            CHECK(by_rule.size() == std::min(bins_by_rule(sorted), most_bins));
        const Bins by_number = bins_of(column, {{}, 0, 17});
        const Bins by_edges = bins_of(column, {{-1.5, -0.3, 0, 0.01, 2, 9}, 0, 0});
        const Bins by_width = bins_of(column, {{}, 0.7, 0});
        for (Bins const* bins : {&by_rule, &by_number, &by_edges, &by_width})
            CHECK(wrong_counts(*bins, sorted) == 0);
        for (Bins const* bins : {&by_rule, &by_number, &by_width}) CHECK(bins->total() == column.size());
        if (sorted.front() < sorted.back())
            for (std::size_t i = 0; i < by_number.edges.size(); ++i)
                CHECK(near(by_number.edges[i],
                           sorted.front() + static_cast<double>(i) * (sorted.back() - sorted.front()) / 17));
    }
}

TEST_CASE("whiskers lead to values, and outliers lie beyond them") {
    for (unsigned number = 0; number < 200; ++number) {
        CAPTURE(number);
        const Column column = random_column(number);
        Column sorted = column;
        std::ranges::sort(sorted);
        const BoxStatistics box = box_statistics(column, 1.5);
        CHECK(near(box.lower_quartile, quantile(sorted, 0.25)));
        CHECK(near(box.median, quantile(sorted, 0.5)));
        CHECK(near(box.upper_quartile, quantile(sorted, 0.75)));
        double const spread = box.upper_quartile - box.lower_quartile;
        CHECK(near(box.notch, 1.57 * spread / std::sqrt(static_cast<double>(column.size()))));
        double const lowest = *std::ranges::lower_bound(sorted, box.lower_quartile - 1.5 * spread);
        double const highest = *(std::ranges::upper_bound(sorted, box.upper_quartile + 1.5 * spread) - 1);
        CHECK(box.lower_whisker == std::min(lowest, box.lower_quartile));
        CHECK(box.upper_whisker == std::max(highest, box.upper_quartile));
        auto const outside = std::ranges::count_if(
            sorted, [&](double value) { return value < box.lower_whisker || value > box.upper_whisker; });
        CHECK(static_cast<std::ptrdiff_t>(box.outliers.size()) == outside);
    }
    // The only values within reach below the box are in it.
    CHECK(box_statistics(Column{0, 10, 10, 10, 11}, 1.5).outliers == Column{0, 11});
    CHECK(box_statistics(Column{0, 10, 10, 10, 11}, infinite).outliers.empty());
    CHECK(box_statistics(Column{3}, 1.5).upper_whisker == 3);
    CHECK(box_statistics(Column{-most, most}, 1.5).median == 0);
}

TEST_CASE("a few, equal, missing, infinite and very large values have bins that hold them") {
    struct {
        char const* what;
        Column column;
        BinRule rule;
        Column edges;
        std::vector<int> counts;
    } const rows[]{
        {"none", {}, {}, {}, {}},
        {"none finite", {missing, infinite, -infinite}, {}, {}, {}},
        {"none finite, edges", {missing, infinite}, {{0, 1}, 0, 0}, {}, {}},
        {"one", {5}, {}, {4.5, 5.5}, {1}},
        {"equal", {2, 2, 2}, {{}, 0, 4}, {1.5, 1.75, 2, 2.25, 2.5}, {0, 0, 3, 0}},
        {"some are missing", {missing, 1, infinite, 2, -infinite}, {{}, 0, 2}, {1, 1.5, 2}, {1, 1}},
        {"equal quartiles: Sturges' rule", {0, 3, 3, 3, 3, 3, 3, 4}, {}, {0, 1, 2, 3, 4}, {1, 0, 0, 7}},
        {"the last edge is held", {0, 1, 2, 3}, {{0, 1, 2}, 0, 0}, {0, 1, 2}, {1, 2}},
        {"edges where nothing is", {0, 1}, {{5, 6}, 0, 0}, {5, 6}, {0}},
        {"edges come before width and number", {0, 1}, {{-1, 9}, 0.1, 3}, {-1, 9}, {2}},
        {"width comes before number", {0.25, 0.5}, {{}, 0.5, 7}, {0, 0.5, 1}, {1, 1}},
        {"decimal widths", {0.1, 0.3, 0.3}, {{}, 0.1, 0}, {0.1, 0.2, 0.3, 0.4}, {1, 0, 2}},
        {"below zero", {-7, -0.5, 6}, {{}, 5, 0}, {-10, -5, 0, 5, 10}, {1, 1, 0, 1}},
        {"as far apart as numbers go", {-most, 0, most}, {{}, 0, 2}, {-most, 0, most}, {1, 2}},
        {"a width of nothing", {1, 2}, {{}, -1, 1}, {1, 2}, {2}},
    };
    for (auto const& row : rows) {
        CAPTURE(row.what);
        const Bins bins = bins_of(row.column, row.rule);
        CHECK(bins.edges == row.edges);
        REQUIRE(bins.size() == row.counts.size());
        for (std::size_t i = 0; i < bins.size(); ++i) CHECK(static_cast<int>(bins.count(i)) == row.counts[i]);
    }
}

TEST_CASE("there are never more bins than numbers, nor than anybody wants") {
    const Column large{1e300, 1e300, 1e300}, neighbours{1, std::nextafter(1, 2)};
    for (Column const& column : {large, neighbours}) {
        const Bins bins = bins_of(column, {{}, 0, 1000});
        CHECK(std::ranges::adjacent_find(bins.edges, std::greater_equal()) == bins.edges.end());
        CHECK(bins.total() == column.size());
    }
    const Column far_apart{0, 1, 2, 3, 1e300};
    for (BinRule const& rule :
         {BinRule{}, BinRule{{}, 1e-300, 0}, BinRule{{}, 0.001, 0}, BinRule{{}, 0, 2'000'000'000}})
        CHECK(bins_of(far_apart, rule).size() == most_bins);
}

TEST_CASE("heights are counts, shares or densities, each bin's or all up to it") {
    const Bins bins = bins_of({1, 1, 2, 5, 99}, {{0, 2, 6}, 0, 0}); // two, and two in twice the width
    using enum HistogramMeasure;
    CHECK(bins.height(1, Count, false) == 2);
    CHECK(bins.height(1, Count, true) == 4);
    CHECK(bins.height(1, Share, false) == 0.5); // of those in bins
    CHECK(bins.height(1, Density, false) == 0.125);
    for (HistogramMeasure const measure : {Share, Density}) {
        CHECK(bins.height(0, measure, true) == 0.5);
        CHECK(bins.height(1, measure, true) == 1);
    }
    CHECK(bins_of({1}, {{5, 6}, 0, 0}).height(0, Density, false) == 0);
}

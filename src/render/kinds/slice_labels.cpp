#include "render/kinds/slice_labels.h"

#include <algorithm>

namespace qv::render {
namespace {

/// Things that touch one another and so move as one: their common wish for the first one's start.
struct Pool {
    double sum = 0;
    double count = 0;
    double start() const { return sum / count; }
};

} // namespace

std::vector<double> pushed_apart(std::span<WishedPlace const> wishes, double low, double high) {
    // Less what lies before each, starts only need to ascend.
    std::vector<Pool> pools;
    std::vector<std::size_t> sizes;
    double before = 0;
    for (WishedPlace const& wish : wishes) {
        Pool pool{wish.middle - wish.height / 2 - before, 1};
        before += wish.height;
        std::size_t size = 1;
        while (!pools.empty() && pools.back().start() >= pool.start()) {
            pool.sum += pools.back().sum;
            pool.count += pools.back().count;
            size += sizes.back();
            pools.pop_back();
            sizes.pop_back();
        }
        pools.push_back(pool);
        sizes.push_back(size);
    }
    double const last_start = std::max(low, high - before);
    std::vector<double> middles;
    middles.reserve(wishes.size());
    double offset = 0;
    for (std::size_t pool = 0; pool < pools.size(); ++pool)
        for (std::size_t i = 0; i < sizes[pool]; ++i) {
            double const height = wishes[middles.size()].height;
            middles.push_back(std::clamp(pools[pool].start(), low, last_start) + offset + height / 2);
            offset += height;
        }
    return middles;
}

} // namespace qv::render

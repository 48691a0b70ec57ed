// A script of anything that can be done to a page: its bytes choose the kind of page and then one gesture,
// call or property after the other, also from inside events. In the end the page must still draw, the same
// picture every time, and be taken out in every format.
#include "Monkey.h"
#include "pages.h"

#include <cstdlib>

using namespace qv;
using namespace qv::testing;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

/// The bytes of a script, two a choice; zeros after its end.
class Script {
public:
    explicit Script(std::span<std::uint8_t const> bytes) : rest_(bytes) {}
    bool is_over() const { return rest_.empty(); }
    std::uint32_t operator()() {
        std::uint32_t choice = 0;
        for (int i = 0; i < 2 && !rest_.empty(); ++i, rest_ = rest_.subspan(1))
            choice = choice << 8 | rest_[0];
        return choice;
    }

private:
    std::span<std::uint8_t const> rest_;
};

void check_that_it_draws(WildHost& wild) {
    wild.page().set_events(nullptr);
    wild.page().SetCrossHair(0);
    auto const drawn = [&] {
        wild.page().Refresh();
        auto const shown = wild.host().picture().pixels();
        return std::vector<std::uint32_t>(shown.begin(), shown.end());
    };
    wild.host().resize_picture({230, 170});
    // The first drawing may choose ranges and make room for titles.
    drawn();
    drawn();
    require(drawn() == drawn());
    wild.page().CopyToClipboard();
    require(wild.page_is_well());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size < 2) return 0;
    Script script({data + 1, size - 1});
    WildHost wild([&script] { return script(); });
    std::size_t const kind = data[0] % (page_kinds.size() + 1);
    if (kind < page_kinds.size()) wild.fill(page_kinds[kind].fill);
    while (!script.is_over()) wild.act();
    check_that_it_draws(wild);
    return 0;
}
